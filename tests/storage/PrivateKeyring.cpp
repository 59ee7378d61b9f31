#include "tests/storage/PrivateKeyring.h"

#include "tests/support/Await.h"

#include <QDBusConnectionInterface>
#include <QDBusInterface>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QDir>
#include <QProcessEnvironment>

#include <csignal>
#include <libsecret/secret.h>
#include <sys/prctl.h>

using namespace Qt::StringLiterals;

namespace {

const auto name = u"org.freedesktop.secrets"_s;
const auto connectionName = u"private bus"_s;

} // namespace

PrivateKeyring::PrivateKeyring() {
    for (const auto *folder : {"data", "config", "cache", "run"})
        QDir(m_home.path()).mkdir(QLatin1String(folder));
    QFile::setPermissions(m_home.filePath(u"run"_s),
                          QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

PrivateKeyring::~PrivateKeyring() {
    QDBusConnection::disconnectFromBus(connectionName);
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
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_address);
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
    m_address = QString::fromLatin1(m_bus->readLine().trimmed());
    qputenv("DBUS_SESSION_BUS_ADDRESS", m_address.toLatin1());
    return QDBusConnection::connectToBus(m_address, connectionName).isConnected();
}

bool PrivateKeyring::startKeyring() {
    m_keyring = process();
    m_keyring->start(u"gnome-keyring-daemon"_s,
                     {u"--unlock"_s, u"--foreground"_s, u"--components=secrets"_s});
    m_keyring->write("\n");
    m_keyring->closeWriteChannel();
    const auto bus = QDBusConnection(connectionName);
    return m_keyring->waitForStarted() &&
           eventually([&] { return bus.interface()->isServiceRegistered(name).value(); });
}

void PrivateKeyring::lockKeyring() {
    QDBusInterface service(name, u"/org/freedesktop/secrets"_s, u"org.freedesktop.Secret.Service"_s,
                           QDBusConnection(connectionName));
    const QDBusReply<QDBusObjectPath> collection = service.call(u"ReadAlias"_s, u"default"_s);
    const QList<QDBusObjectPath> collections{collection.value()};
    service.call(u"Lock"_s, QVariant::fromValue(collections));
}

void PrivateKeyring::setFrozen(bool frozen) {
    ::kill(static_cast<pid_t>(m_keyring->processId()), frozen ? SIGSTOP : SIGCONT);
}
