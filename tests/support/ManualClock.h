#pragma once

#include "platform/Clock.h"
#include "platform/Completion.h"

#include <map>

/// A clock that stands still until it is moved.
class ManualClock final : public Clock {
public:
    QDateTime now() const override { return m_now; }
    [[nodiscard]] Task<void> sleep(std::chrono::milliseconds duration,
                                   std::stop_token stop) override;

    /// Moves the clock on. Sleepers whose time has come go on in later turns of the event loop, the
    /// earliest first.
    void advance(std::chrono::milliseconds duration);

    /// How many are asleep.
    qsizetype sleepers() const;

private:
    QDateTime m_now = QDateTime::fromMSecsSinceEpoch(1'800'000'000'000, Qt::UTC);
    std::multimap<QDateTime, Completion<bool>> m_sleepers;
};
