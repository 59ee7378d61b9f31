#include "tests/support/ManualClock.h"

#include "platform/CancellationError.h"

#include <algorithm>

Task<void> ManualClock::sleep(std::chrono::milliseconds duration, std::stop_token stop) {
    Completion<bool> over;
    m_sleepers.emplace(m_now.addMSecs(duration.count()), over);
    std::function<void()> onStop = [over]() mutable {
        over.fail(std::make_exception_ptr(CancellationError()));
    };
    std::stop_callback stopping(stop, onStop);
    auto waiting = over.result();
    co_await waiting;
}

void ManualClock::advance(std::chrono::milliseconds duration) {
    m_now = m_now.addMSecs(duration.count());
    const auto future = m_sleepers.upper_bound(m_now);
    for (auto sleeper = m_sleepers.begin(); sleeper != future; ++sleeper)
        sleeper->second.succeed(true);
    m_sleepers.erase(m_sleepers.begin(), future);
}

qsizetype ManualClock::sleepers() const {
    return std::count_if(m_sleepers.begin(), m_sleepers.end(),
                         [](const auto &sleeper) { return !sleeper.second.isComplete(); });
}
