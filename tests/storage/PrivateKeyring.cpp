#include "tests/storage/PrivateKeyring.h"

#include "tests/support/Await.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusServiceWatcher>

#include <csignal>
#include <libsecret/secret.h>

using namespace Qt::StringLiterals;

namespace {

const auto keyringName = u"org.freedesktop.secrets"_s;

QDBusMessage call(const QDBusConnection &connection, const QString &method,
                  const QVariant &argument) {
    auto message = QDBusMessage::createMethodCall(keyringName, u"/org/freedesktop/secrets"_s,
                                                  u"org.freedesktop.Secret.Service"_s, method);
    message.setArguments({argument});
    return connection.call(message);
}

} // namespace

PrivateKeyring::~PrivateKeyring() {
    QDBusConnection::disconnectFromBus(m_connection.name());
    secret_service_disconnect();
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    if (m_keyring) {
        m_keyring->kill();
        m_keyring->waitForFinished();
    }
}

bool PrivateKeyring::startBus() {
    if (!m_bus.start())
        return false;
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_bus.address().toLatin1());
    m_connection = QDBusConnection::connectToBus(m_bus.address(), u"keyring"_s);
    return m_connection.isConnected();
}

bool PrivateKeyring::startKeyring() {
    // Its news wake the event loop.
    const QDBusServiceWatcher watcher(keyringName, m_connection);
    m_keyring = m_bus.process();
    m_keyring->setStandardErrorFile(QProcess::nullDevice());
    m_keyring->start(u"gnome-keyring-daemon"_s,
                     {u"--unlock"_s, u"--foreground"_s, u"--components=secrets"_s});
    m_keyring->write("\n");
    m_keyring->closeWriteChannel();
    return m_keyring->waitForStarted() && eventually([this] {
               return m_connection.interface()->isServiceRegistered(keyringName).value();
           });
}

void PrivateKeyring::lockKeyring() {
    const auto alias = call(m_connection, u"ReadAlias"_s, u"default"_s);
    const QList<QDBusObjectPath> paths = {alias.arguments().value(0).value<QDBusObjectPath>()};
    call(m_connection, u"Lock"_s, QVariant::fromValue(paths));
}

void PrivateKeyring::setFrozen(bool frozen) {
    ::kill(static_cast<pid_t>(m_keyring->processId()), frozen ? SIGSTOP : SIGCONT);
}
