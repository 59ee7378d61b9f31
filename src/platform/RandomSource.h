#pragma once

#include <QByteArray>

#include <optional>

/// Random bytes that nobody can guess.
class RandomSource {
public:
    virtual ~RandomSource() = default;

    /// At most 256. Absent when the system has none to give.
    virtual std::optional<QByteArray> bytes(qsizetype count) = 0;
};
