#include "signin/GoogleSignIn.h"
#include "platform/CancellationError.h"
#include "platform/URLError.h"
#include "tests/support/Await.h"
#include "tests/support/FixedRandom.h"
#include "tests/support/ManualClock.h"
#include "tests/support/RecordingBrowserSession.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const QString code(64, u'c');

class GoogleSignInTest : public testing::Test {
protected:
    GoogleAuthorization authorization() { return {random, clock.now()}; }

    Task<QString> begin(const GoogleAuthorization &attempt, std::stop_token stop = {}) {
        return signIn.authorize(attempt, u"de"_s, std::move(stop));
    }
    static QString callback(const GoogleAuthorization &attempt) {
        return u"quillmere-mac://auth/google?state="_s + QString::fromLatin1(attempt.state()) +
               u"&code="_s + code;
    }
    /// The code, or the name of the failure.
    static QString outcome(Task<QString> task) {
        try {
            return await(std::move(task));
        } catch (const URLError &error) {
            return URLError::name(error.code());
        } catch (const CancellationError &) {
            return u"cancelled"_s;
        }
    }
    static std::exception_ptr cancellation() {
        return std::make_exception_ptr(CancellationError());
    }

    FixedRandom random;
    ManualClock clock;
    RecordingBrowserSession browser;
    GoogleSignIn signIn{browser, clock};
};

} // namespace

TEST_F(GoogleSignInTest, theBrowserComesBackWithTheCode) {
    signIn.cancel();
    const auto attempt = authorization();
    auto task = begin(attempt);
    EXPECT_EQ(browser.started(), QList{attempt.startURL(u"de"_s)});
    EXPECT_EQ(browser.callbackScheme(), u"quillmere-mac"_s);
    clock.advance(899s);
    browser.callbacks()[0].succeed(callback(attempt));
    EXPECT_EQ(outcome(std::move(task)), code);

    auto late = begin(attempt);
    clock.advance(1s);
    browser.callbacks()[1].succeed(callback(attempt));
    EXPECT_EQ(outcome(std::move(late)), u"timedOut"_s);
}

TEST_F(GoogleSignInTest, aNewerAttemptEndsTheOneBefore) {
    const auto first = authorization();
    const auto second = authorization();
    std::stop_source stopFirst;
    auto firstTask = begin(first, stopFirst.get_token());
    auto secondTask = begin(second);
    browser.callbacks()[0].succeed(callback(first));
    EXPECT_EQ(outcome(std::move(firstTask)), u"cancelled"_s);
    stopFirst.request_stop();
    browser.callbacks()[1].succeed(callback(second));
    EXPECT_EQ(outcome(std::move(secondTask)), code);
}

TEST_F(GoogleSignInTest, whateverEndsTheVisitEndsItOnce) {
    const auto attempt = authorization();
    std::stop_source stop;
    const struct {
        const char *name;
        std::function<void(Completion<QString> &)> end;
        QString outcome;
    } cases[] = {
        {"cancelled by the program", [&](auto &) { signIn.cancel(); }, u"cancelled"_s},
        {"stopped", [&](auto &) { stop.request_stop(); }, u"cancelled"_s},
        {"stopped just after the callback",
         [&](auto &visit) {
             visit.succeed(callback(attempt));
             stop.request_stop();
         },
         u"cancelled"_s},
        {"given up by the user", [&](auto &visit) { visit.fail(cancellation()); }, u"cancelled"_s},
        {"broken",
         [&](auto &visit) {
             visit.fail(std::make_exception_ptr(URLError(URLError::Code::unknown)));
         },
         u"unknown"_s},
        {"answered by somebody else",
         [&](auto &visit) { visit.succeed(u"quillmere-mac://auth/google"_s); },
         u"badServerResponse"_s},
    };
    for (const auto &one : cases) {
        stop = std::stop_source();
        auto task = begin(attempt, stop.get_token());
        auto &visit = browser.callbacks().last();
        one.end(visit);
        visit.succeed(callback(attempt));
        signIn.cancel();
        visit.fail(cancellation());
        EXPECT_EQ(outcome(std::move(task)), one.outcome) << one.name;
    }
}

TEST_F(GoogleSignInTest, withoutABrowserOrAWishNothingWaits) {
    browser.setWorking(false);
    EXPECT_EQ(outcome(begin(authorization())), u"cannotLoadFromNetwork"_s);

    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(outcome(begin(authorization(), stop.get_token())), u"cancelled"_s);
    EXPECT_EQ(browser.started().size(), 1);

    browser.setWorking(true);
    std::stop_source later;
    auto task = begin(authorization(), later.get_token());
    const int before = browser.cancellations();
    later.request_stop();
    EXPECT_GT(browser.cancellations(), before) << "the browser may forget the visit";
    EXPECT_EQ(outcome(std::move(task)), u"cancelled"_s);
}
