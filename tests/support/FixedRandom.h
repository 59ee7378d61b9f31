#pragma once

#include "platform/RandomSource.h"

/// Bytes that count up: no two answers are the same, and a test can tell them in advance.
class FixedRandom final : public RandomSource {
public:
    std::optional<QByteArray> bytes(qsizetype count) override {
        if (m_exhausted)
            return std::nullopt;
        QByteArray bytes;
        while (bytes.size() < count)
            bytes.append(static_cast<char>(m_next++));
        return bytes;
    }

    void exhaust() { m_exhausted = true; }

private:
    unsigned char m_next = 0;
    bool m_exhausted = false;
};
