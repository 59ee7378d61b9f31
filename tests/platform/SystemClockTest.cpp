#include "platform/SystemClock.h"
#include "platform/CancellationError.h"
#include "tests/support/Await.h"

#include <QElapsedTimer>

#include <gtest/gtest.h>

using namespace std::chrono_literals;

TEST(SystemClock, tellsTheTimeInUtcAndSleepsAsLongAsAsked) {
    SystemClock clock;
    EXPECT_EQ(clock.now().timeSpec(), Qt::UTC);
    EXPECT_LT(std::abs(clock.now().msecsTo(QDateTime::currentDateTime())), 5000);
    QElapsedTimer elapsed;
    elapsed.start();
    auto longSleep = clock.sleep(80ms, {});
    await(clock.sleep(40ms, {}));
    // Timers of the system are right to a twentieth.
    EXPECT_GE(elapsed.elapsed(), 37);
    await(std::move(longSleep));
    EXPECT_GE(elapsed.elapsed(), 75);
    await(clock.sleep(0ms, {}));
}

TEST(SystemClock, aCancelledSleepEndsAtOnce) {
    SystemClock clock;
    std::stop_source stop;
    auto asleep = clock.sleep(1h, stop.get_token());
    settleEventLoop();
    stop.request_stop();
    EXPECT_THROW(await(std::move(asleep)), CancellationError);
    EXPECT_THROW(await(clock.sleep(1h, stop.get_token())), CancellationError);
    EXPECT_THROW(await(clock.sleep(0ms, stop.get_token())), CancellationError);
}
