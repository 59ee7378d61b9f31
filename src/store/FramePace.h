#pragma once

#include "platform/Task.h"

#include <chrono>
#include <functional>
#include <stop_token>

class Clock;

/// Tells of what changes often no more than once in a frame: of the first change at once, of those
/// that follow within a frame at its end. Nothing runs while nothing changes.
class FramePace final {
public:
    static constexpr std::chrono::milliseconds frame{16};

    FramePace(Clock &clock, std::function<void()> tell);
    ~FramePace();

    /// To be called on every change.
    void changed();

    /// Tells now of what has not been told yet.
    void flush();

private:
    Task<void> passFrames(std::stop_token stop);

    Clock &m_clock;
    std::function<void()> m_tell;
    bool m_untold = false;
    bool m_passing = false;
    std::stop_source m_stop;
};
