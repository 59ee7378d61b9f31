#pragma once

#include "records/Identifier.h"

#include <utility>

/// What an operation started for, to be compared with the live state after each wait. Replacing the
/// live value voids the operation.
template <class Value = Identifier>
class Marker {
public:
    explicit Marker(const Value &live) : m_live(&live), m_copy(live) {}

    /// Whether the live value is still the one that was copied.
    bool holds() const { return *m_live == m_copy; }

    const Value &value() const { return m_copy; }

private:
    const Value *m_live;
    Value m_copy;
};
