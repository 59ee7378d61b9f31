#pragma once

#include <random>

/// The one source of chance of a simulation: the same seed gives the same course.
class Random final {
public:
    explicit Random(unsigned seed) : m_engine(seed) {}

    /// 0 up to, and without, the limit.
    int below(int limit) { return static_cast<int>(m_engine() % static_cast<unsigned>(limit)); }
    bool chance(int percent) { return below(100) < percent; }

private:
    std::mt19937 m_engine;
};
