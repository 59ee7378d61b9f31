#include "tests/storage/PrivateKeyring.h"

#include "tests/support/Await.h"

#include <QTimer>

#include <csignal>
#include <libsecret/secret.h>

using namespace Qt::StringLiterals;

namespace {

constexpr auto busName = "org.freedesktop.DBus";
constexpr auto keyringName = "org.freedesktop.secrets";
constexpr auto keyringPath = "/org/freedesktop/secrets";

} // namespace

PrivateKeyring::~PrivateKeyring() {
    m_connection.reset();
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
    const auto address = m_bus.address().toLatin1();
    qputenv("DBUS_SESSION_BUS_ADDRESS", address);
    m_connection = {
        g_dbus_connection_new_for_address_sync(
            address.constData(),
            static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                              G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION),
            nullptr, nullptr, nullptr),
        [](GDBusConnection *connection) {
            if (connection)
                g_object_unref(connection);
        }};
    return m_connection != nullptr;
}

GVariant *PrivateKeyring::call(const char *name, const char *path, const char *method,
                               GVariant *arguments) const {
    const QByteArray called(method);
    const auto dot = called.lastIndexOf('.');
    return g_dbus_connection_call_sync(m_connection.get(), name, path,
                                       called.first(dot).constData(),
                                       called.sliced(dot + 1).constData(), arguments, nullptr,
                                       G_DBUS_CALL_FLAGS_NO_AUTO_START, -1, nullptr, nullptr);
}

bool PrivateKeyring::startKeyring() {
    m_keyring = m_bus.process();
    m_keyring->setStandardErrorFile(QProcess::nullDevice());
    m_keyring->start(u"gnome-keyring-daemon"_s,
                     {u"--unlock"_s, u"--foreground"_s, u"--components=secrets"_s});
    m_keyring->write("\n");
    m_keyring->closeWriteChannel();
    // What happens on the bus does not wake this process.
    QTimer tick;
    tick.start(5);
    return m_keyring->waitForStarted() && eventually([&] {
               gboolean there = FALSE;
               const auto reply = call(busName, "/", "org.freedesktop.DBus.NameHasOwner",
                                       g_variant_new("(s)", keyringName));
               g_variant_get(reply, "(b)", &there);
               g_variant_unref(reply);
               return there != FALSE;
           });
}

void PrivateKeyring::lockKeyring() {
    const auto alias = call(keyringName, keyringPath, "org.freedesktop.Secret.Service.ReadAlias",
                            g_variant_new("(s)", "default"));
    const char *path = nullptr;
    g_variant_get(alias, "(&o)", &path);
    const char *const paths[] = {path, nullptr};
    g_variant_unref(call(keyringName, keyringPath, "org.freedesktop.Secret.Service.Lock",
                         g_variant_new("(^ao)", paths)));
    g_variant_unref(alias);
}

void PrivateKeyring::setFrozen(bool frozen) {
    ::kill(static_cast<pid_t>(m_keyring->processId()), frozen ? SIGSTOP : SIGCONT);
}
