#pragma once

#include "platform/Task.h"

#include <QDateTime>

#include <chrono>
#include <stop_token>

/// Time. Tests put a clock in its place that stands still until it is moved.
class Clock {
public:
    virtual ~Clock() = default;

    /// The current time, UTC.
    virtual QDateTime now() const = 0;

    /// Goes on after the given time; throws CancellationError once `stop` was requested.
    /// Called and resumed on the main thread.
    [[nodiscard]] virtual Task<void> sleep(std::chrono::milliseconds duration,
                                           std::stop_token stop) = 0;
};
