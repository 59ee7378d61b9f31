#include "platform/Completion.h"
#include "tests/support/Await.h"

#include <gtest/gtest.h>

namespace {

Task<void> note(Completion<QString> completion, std::shared_ptr<QStringList> notes) {
    auto waiting = completion.result();
    QString result = co_await waiting;
    notes->append(result);
}

} // namespace

TEST(Completion, theFirstOneCounts) {
    const auto failure = std::make_exception_ptr(std::runtime_error("late"));
    Completion<int> succeeded;
    auto copy = succeeded;
    EXPECT_FALSE(copy.isComplete());
    succeeded.succeed(1);
    copy.succeed(2);
    copy.fail(failure);
    EXPECT_TRUE(copy.isComplete());
    EXPECT_EQ(await(succeeded.result()), 1);

    Completion<int> failed;
    auto waiting = failed.result();
    failed.fail(failure);
    failed.succeed(1);
    EXPECT_THROW(await(std::move(waiting)), std::runtime_error);
}

TEST(Completion, theWaiterGoesOnInALaterTurnEvenIfItsTaskWasDropped) {
    Completion<QString> completion;
    const auto notes = std::make_shared<QStringList>();
    note(completion, notes);
    completion.succeed(QStringLiteral("done"));
    EXPECT_TRUE(notes->isEmpty());
    EXPECT_TRUE(eventually([&] { return !notes->isEmpty(); }));
    EXPECT_EQ(*notes, QStringList{QStringLiteral("done")});
}
