#include "platform/DesktopBrowserSession.h"
#include "tests/support/Await.h"
#include "tests/support/RecordingBrowser.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(DesktopBrowserSession, oneAddressOfTheSchemeEndsTheVisitThatWaitsForIt) {
    RecordingBrowser browser;
    DesktopBrowserSession session(browser);
    const QUrl page(u"https://example.com/start"_s);
    const auto scheme = u"program"_s;

    session.deliver(u"program://early"_s);
    Completion<QString> visit;
    ASSERT_TRUE(session.start(page, scheme, visit));
    EXPECT_EQ(browser.opened(), QList{page});
    for (const auto &other : {u"programs://other"_s, u"https://program:"_s, u"Program:"_s, u""_s})
        session.deliver(other);
    EXPECT_FALSE(visit.isComplete());
    session.deliver(u"program://A B"_s);
    session.deliver(u"program://late"_s);
    EXPECT_EQ(await(visit.result()), u"program://A B"_s) << "as it was written";

    Completion<QString> cancelled;
    ASSERT_TRUE(session.start(page, scheme, cancelled));
    session.cancel();
    session.deliver(u"program://late"_s);
    EXPECT_FALSE(cancelled.isComplete());

    browser.setWorking(false);
    Completion<QString> never;
    EXPECT_FALSE(session.start(page, scheme, never));
    session.deliver(u"program://stray"_s);
    EXPECT_FALSE(never.isComplete());
}
