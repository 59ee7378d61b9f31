#include "platform/Start.h"
#include "platform/CancellationError.h"
#include "tests/support/Await.h"
#include "tests/support/ManualClock.h"
#include "tests/support/MessageCatcher.h"

#include <gtest/gtest.h>

namespace {

Task<void> note(std::shared_ptr<QStringList> notes, QString text) {
    notes->append(text);
    co_return;
}

Task<void> fail(std::exception_ptr error) {
    std::rethrow_exception(error);
    co_return;
}

Task<void> failAfter(ManualClock *clock, std::exception_ptr error) {
    auto sleeping = clock->sleep(std::chrono::seconds(1), {});
    co_await sleeping;
    std::rethrow_exception(error);
}

} // namespace

TEST(Start, theFirstStepsComeInLaterTurnsInOrder) {
    const auto notes = std::make_shared<QStringList>();
    for (const auto &text : {QStringLiteral("first"), QStringLiteral("second")})
        start([notes, text] { return note(notes, text); });
    EXPECT_TRUE(notes->isEmpty());
    settleEventLoop();
    EXPECT_EQ(*notes, (QStringList{QStringLiteral("first"), QStringLiteral("second")}));
}

TEST(Start, aCancellationIsSilentAndEverythingElseIsLoud) {
    const auto cancellation = std::make_exception_ptr(CancellationError());
    const auto fault = std::make_exception_ptr(std::runtime_error("out of paper"));
    ManualClock clock;
    const MessageCatcher catcher;

    start([=] { return fail(cancellation); });
    start([=, &clock] { return failAfter(&clock, cancellation); });
    settleEventLoop();
    clock.advance(std::chrono::seconds(1));
    settleEventLoop();
    EXPECT_TRUE(catcher.messages().isEmpty());

    start([=] { return fail(fault); });
    start([=, &clock] { return failAfter(&clock, fault); });
    settleEventLoop();
    EXPECT_EQ(catcher.messages().size(), 1);
    clock.advance(std::chrono::seconds(1));
    settleEventLoop();
    ASSERT_EQ(catcher.messages().size(), 2);
    for (const auto &message : catcher.messages())
        EXPECT_TRUE(message.contains(QLatin1String("out of paper")));
}
