#include "signin/GoogleSignIn.h"
#include "platform/CancellationError.h"
#include "platform/URLError.h"
#include "tests/support/Await.h"
#include "tests/support/FixedRandom.h"
#include "tests/support/ManualClock.h"
#include "tests/support/RecordingBrowserSession.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(GoogleSignIn, anAttemptEndsOnceWhateverEndsIt) {
    FixedRandom random;
    ManualClock clock;
    RecordingBrowserSession browser;
    GoogleSignIn signIn(browser, clock);
    signIn.cancel();
    const auto fault = std::make_exception_ptr(URLError(URLError::Code::unknown));
    std::stop_source stop;
    std::optional<Task<QString>> newer;
    const QString code(64, u'c');

    const struct {
        std::function<void(Completion<QString>)> end;
        QString outcome;
    } cases[] = {
        {[](auto) {}, code},
        {[&](auto) { signIn.cancel(); }, u"cancelled"_s},
        {[&](auto) { stop.request_stop(); }, u"cancelled"_s},
        {[&](auto visit) { visit.fail(fault); }, u"unknown"_s},
        {[&](auto) { clock.advance(GoogleAuthorization::life); }, u"timedOut"_s},
        {[&](auto) {
             newer = signIn.authorize({random, clock.now()}, u"de"_s, {});
         },
         u"cancelled"_s},
    };
    for (const auto &one : cases) {
        stop = std::stop_source();
        const GoogleAuthorization attempt(random, clock.now());
        auto task = signIn.authorize(attempt, u"de"_s, stop.get_token());
        EXPECT_EQ(browser.started().last(), attempt.startURL(u"de"_s));
        auto visit = browser.callbacks().last();
        one.end(visit);
        visit.succeed(u"quillmere-mac://auth/google?state=%1&code=%2"_s.arg(
            QString::fromLatin1(attempt.state()), code));
        QString outcome;
        try {
            outcome = await(std::move(task));
        } catch (const URLError &error) {
            outcome = URLError::name(error.code());
        } catch (const CancellationError &) {
            outcome = u"cancelled"_s;
        }
        EXPECT_EQ(outcome, one.outcome);
        stop.request_stop();
    }
    // The last one was replaced; its end did not reach the newer one.
    EXPECT_FALSE(browser.callbacks().last().isComplete());
    signIn.cancel();
    EXPECT_THROW(await(std::move(*newer)), CancellationError);
}
