#include "platform/RunningInstance.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QFileOpenEvent>

#include <qcoro/qcorodbuspendingcall.h>

namespace {

const auto busService = QStringLiteral("org.freedesktop.DBus");
const auto busPath = QStringLiteral("/org/freedesktop/DBus");
const auto interface = QStringLiteral("org.freedesktop.Application");
const auto tokenKey = QStringLiteral("activation-token");

// Numbers of the bus's own protocol.
constexpr uint doNotQueue = 4;
constexpr uint nowOwner = 1;
constexpr uint alreadyOwner = 4;

/// A bus that is alive answers within a millisecond; the window waits no longer for a broken one.
constexpr int busLimit = 1000;
/// The other process may be busy.
constexpr int processLimit = 5000;

QString token(const QVariantMap &platformData) {
    return platformData.value(tokenKey).toString();
}

} // namespace

RunningInstance::RunningInstance(const QDBusConnection &bus, const QString &name)
    : m_bus(bus),
      m_name(name),
      m_path(QLatin1Char('/') + QString(name).replace(u'.', u'/').replace(u'-', u'_')) {
    // Before the name is claimed: whoever finds the name finds the object too.
    m_bus.registerObject(m_path, this, QDBusConnection::ExportScriptableSlots);
}

RunningInstance::~RunningInstance() {
    m_bus.unregisterObject(m_path);
}

Task<RunningInstance::Standing> RunningInstance::claim() {
    if (!m_bus.isConnected())
        co_return Standing::unknown;
    auto call = QDBusMessage::createMethodCall(busService, busPath, busService,
                                               QStringLiteral("RequestName"));
    call.setArguments({m_name, doNotQueue});
    const QDBusPendingCall asking = m_bus.asyncCall(call, busLimit);
    const QDBusMessage reply = co_await asking;
    if (reply.type() != QDBusMessage::ReplyMessage)
        co_return Standing::unknown;
    const uint answer = reply.arguments().value(0).toUInt();
    co_return answer == nowOwner || answer == alreadyOwner ? Standing::first : Standing::later;
}

Task<bool> RunningInstance::handOver(QStringList addresses, QString activationToken) {
    QVariantMap platformData;
    if (!activationToken.isEmpty())
        platformData.insert(tokenKey, activationToken);
    auto call = QDBusMessage::createMethodCall(m_name, m_path, interface,
                                               addresses.isEmpty() ? QStringLiteral("Activate")
                                                                   : QStringLiteral("Open"));
    if (!addresses.isEmpty())
        call << addresses;
    call << platformData;
    // A process that has just ended is not to be started again by the bus: this one is there.
    call.setAutoStartService(false);
    const QDBusPendingCall telling = m_bus.asyncCall(call, processLimit);
    const QDBusMessage reply = co_await telling;
    co_return reply.type() == QDBusMessage::ReplyMessage;
}

bool RunningInstance::eventFilter(QObject *watched, QEvent *event) {
    if (event->type() != QEvent::FileOpen)
        return QObject::eventFilter(watched, event);
    const auto *opening = static_cast<QFileOpenEvent *>(event);
    Q_EMIT called({QString::fromLatin1(opening->url().toEncoded())}, {});
    return true;
}

void RunningInstance::Activate(const QVariantMap &platformData) {
    Q_EMIT called({}, token(platformData));
}

void RunningInstance::Open(const QStringList &addresses, const QVariantMap &platformData) {
    Q_EMIT called(addresses, token(platformData));
}

void RunningInstance::ActivateAction(const QString &, const QVariantList &,
                                     const QVariantMap &platformData) {
    // There are no actions; whoever asks for one at least sees the program.
    Activate(platformData);
}
