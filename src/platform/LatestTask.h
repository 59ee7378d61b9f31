#pragma once

#include "platform/Task.h"

#include <functional>
#include <stop_token>

/// Work of which only the latest counts: beginning it again stops what was begun before, and so
/// does the end of this object, which its owner holds.
///
/// Once its `stop` was requested the owner may be gone: the operation asks it after each wait,
/// before it touches anything.
class LatestTask final {
public:
    LatestTask() = default;
    ~LatestTask() { stop(); }
    LatestTask(const LatestTask &) = delete;
    LatestTask &operator=(const LatestTask &) = delete;

    /// As with start(): the first step is taken in the next turn of the event loop, unless the work
    /// was stopped by then. `operation` makes the task; it must not be a coroutine itself.
    void begin(std::function<Task<void>(std::stop_token)> operation);

    void stop() { m_stop.request_stop(); }

private:
    std::stop_source m_stop{std::nostopstate};
};
