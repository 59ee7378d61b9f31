#include "platform/RunningInstance.h"
#include "tests/support/Await.h"
#include "tests/support/PrivateBus.h"

#include <QCoreApplication>
#include <QFileOpenEvent>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using Standing = RunningInstance::Standing;

TEST(RunningInstance, aLaterProcessTellsTheFirstOneAndTakesItsPlace) {
    PrivateBus bus;
    ASSERT_TRUE(bus.start());
    const auto name = u"chat.quillmere.two-words"_s;
    RunningInstance later(QDBusConnection::connectToBus(bus.address(), u"later"_s), name);
    QStringList calls;
    {
        RunningInstance first(QDBusConnection::connectToBus(bus.address(), u"first"_s), name);
        QObject::connect(&first, &RunningInstance::called, &first,
                         [&](const QStringList &addresses, const QString &token) {
                             calls.append(addresses.join(u' ') + u'|' + token);
                         });
        EXPECT_EQ(await(first.claim()), Standing::first);
        EXPECT_EQ(await(later.claim()), Standing::later);
        EXPECT_TRUE(await(later.handOver({}, {})));
        EXPECT_TRUE(await(later.handOver({u"a://B c"_s, u"d:"_s}, u"permission"_s)));
        first.ActivateAction(u"new"_s, {}, {});
        // As macOS delivers an address.
        qApp->installEventFilter(&first);
        QFileOpenEvent opening(QUrl(u"program://auth?a=%20b"_s));
        EXPECT_TRUE(QCoreApplication::sendEvent(qApp, &opening));
        EXPECT_EQ(calls, (QStringList{u"|"_s, u"a://B c d:|permission"_s, u"|"_s,
                                      u"program://auth?a=%20b|"_s}));
    }
    QDBusConnection::disconnectFromBus(u"first"_s);
    EXPECT_FALSE(await(later.handOver({u"a:"_s}, {})));
    EXPECT_EQ(await(later.claim()), Standing::first);
    QDBusConnection::disconnectFromBus(u"later"_s);
}
