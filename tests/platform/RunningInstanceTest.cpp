#include "platform/RunningInstance.h"
#include "tests/support/Await.h"
#include "tests/support/PrivateBus.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QFileOpenEvent>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using Standing = RunningInstance::Standing;

namespace {

const auto name = u"chat.quillmere.two-words"_s;

/// A process of the program, as far as the bus can tell.
struct Process final {
    Process(const PrivateBus &privateBus, const QString &connectionName)
        : connection(connectionName),
          bus(QDBusConnection::connectToBus(privateBus.address(), connection)),
          instance(bus, name) {
        QObject::connect(&instance, &RunningInstance::called, &instance,
                         [this](const QStringList &addresses, const QString &token) {
                             calls.append(addresses.join(u' ') + u'|' + token);
                         });
    }
    ~Process() { QDBusConnection::disconnectFromBus(connection); }
    Q_DISABLE_COPY_MOVE(Process)

    QString connection;
    QDBusConnection bus;
    RunningInstance instance;
    QStringList calls;
};

} // namespace

TEST(RunningInstance, aLaterProcessTellsTheFirstOne) {
    PrivateBus bus;
    ASSERT_TRUE(bus.start());
    Process later(bus, u"later"_s);
    {
        Process first(bus, u"first"_s);
        EXPECT_EQ(await(first.instance.claim()), Standing::first);
        EXPECT_EQ(await(first.instance.claim()), Standing::first);
        EXPECT_EQ(await(later.instance.claim()), Standing::later);
        EXPECT_TRUE(await(later.instance.handOver({}, {})));
        EXPECT_TRUE(await(later.instance.handOver({}, u"permission"_s)));
        EXPECT_TRUE(await(later.instance.handOver({u"a://B c"_s, u"d:"_s}, u"permission"_s)));
        EXPECT_TRUE(await(later.instance.handOver({u"a:"_s}, {})));
        EXPECT_EQ(first.calls,
                  (QStringList{u"|"_s, u"|permission"_s, u"a://B c d:|permission"_s, u"a:|"_s}));
    }
    EXPECT_FALSE(await(later.instance.handOver({u"a:"_s}, {}))) << "the first one has ended";
    EXPECT_EQ(await(later.instance.claim()), Standing::first);
    EXPECT_TRUE(later.calls.isEmpty());
}

TEST(RunningInstance, theDesktopsOtherWaysReachIt) {
    PrivateBus bus;
    ASSERT_TRUE(bus.start());
    Process process(bus, u"process"_s);
    ASSERT_EQ(await(process.instance.claim()), Standing::first);

    const Process desktop(bus, u"desktop"_s);
    auto call =
        QDBusMessage::createMethodCall(name, u"/chat/quillmere/two_words"_s,
                                       u"org.freedesktop.Application"_s, u"ActivateAction"_s);
    call << u"new"_s << QVariantList() << QVariantMap{{u"activation-token"_s, u"permission"_s}};
    desktop.bus.asyncCall(call);
    ASSERT_TRUE(eventually([&] { return !process.calls.isEmpty(); }));
    EXPECT_EQ(process.calls.takeFirst(), u"|permission"_s);

    QFileOpenEvent opening(QUrl(u"program://auth?a=%20b"_s));
    EXPECT_TRUE(process.instance.eventFilter(nullptr, &opening));
    EXPECT_EQ(process.calls, QStringList{u"program://auth?a=%20b|"_s});
    QEvent other(QEvent::User);
    EXPECT_FALSE(process.instance.eventFilter(nullptr, &other));
}

TEST(RunningInstance, withoutABusNobodyKnows) {
    Process process(PrivateBus(), u"none"_s);
    EXPECT_EQ(await(process.instance.claim()), Standing::unknown);
    EXPECT_FALSE(await(process.instance.handOver({}, {})));
}
