#include "tests/storage/PrivateKeyring.h"

#include "tests/support/Await.h"

#include <QDir>
#include <QProcessEnvironment>
#include <QTimer>

#include <csignal>
#include <libsecret/secret.h>
#include <sys/prctl.h>

using namespace Qt::StringLiterals;

namespace {

constexpr auto busName = "org.freedesktop.DBus";
constexpr auto keyringName = "org.freedesktop.secrets";
constexpr auto keyringPath = "/org/freedesktop/secrets";

} // namespace

PrivateKeyring::PrivateKeyring() {
    for (const auto *folder : {"data", "config", "cache", "run"})
        QDir(m_home.path()).mkdir(QLatin1String(folder));
    QFile::setPermissions(m_home.filePath(u"run"_s),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

PrivateKeyring::~PrivateKeyring() {
    m_connection.reset();
    secret_service_disconnect();
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    for (auto *process : {m_keyring.get(), m_bus.get()}) {
        if (process) {
            process->kill();
            process->waitForFinished();
        }
    }
}

std::unique_ptr<QProcess> PrivateKeyring::process() const {
    auto process = std::make_unique<QProcess>();
    QProcessEnvironment environment;
    environment.insert(u"PATH"_s, qEnvironmentVariable("PATH"));
    environment.insert(u"HOME"_s, m_home.path());
    environment.insert(u"XDG_DATA_HOME"_s, m_home.filePath(u"data"_s));
    environment.insert(u"XDG_CONFIG_HOME"_s, m_home.filePath(u"config"_s));
    environment.insert(u"XDG_CACHE_HOME"_s, m_home.filePath(u"cache"_s));
    environment.insert(u"XDG_RUNTIME_DIR"_s, m_home.filePath(u"run"_s));
    // Programs that the bus could start are none of this test's.
    environment.insert(u"XDG_DATA_DIRS"_s, m_home.filePath(u"data"_s));
    if (!m_address.isEmpty())
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, QString::fromLatin1(m_address));
    process->setProcessEnvironment(environment);
    process->setStandardErrorFile(QProcess::nullDevice());
    process->setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    return process;
}

bool PrivateKeyring::startBus() {
    m_bus = process();
    const auto configuration = m_home.filePath(u"bus.conf"_s);
    QFile file(configuration);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write("<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\""
               " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\"><busconfig>"
               "<type>session</type><listen>unix:tmpdir=" +
               QFile::encodeName(m_home.filePath(u"run"_s)) +
               "</listen><policy context=\"default\"><allow send_destination=\"*\"/>"
               "<allow receive_sender=\"*\"/>"
               "<allow own=\"*\"/></policy></busconfig>");
    file.close();
    m_bus->start(u"dbus-daemon"_s,
                 {u"--nofork"_s, u"--print-address"_s, u"--config-file="_s + configuration});
    if (!m_bus->waitForReadyRead())
        return false;
    m_address = m_bus->readLine().trimmed();
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_address);
    m_connection = {
        g_dbus_connection_new_for_address_sync(
            m_address.constData(),
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
    m_keyring = process();
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
