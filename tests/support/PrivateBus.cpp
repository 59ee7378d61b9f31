#include "tests/support/PrivateBus.h"

#include <QDir>
#include <QFile>
#include <QProcessEnvironment>

#include <csignal>
#include <sys/prctl.h>

using namespace Qt::StringLiterals;

PrivateBus::PrivateBus() {
    for (const auto *folder : {"data", "config", "cache", "run", "services"})
        QDir(m_home.path()).mkdir(QLatin1String(folder));
    QFile::setPermissions(folder(u"run"_s), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
}

PrivateBus::~PrivateBus() {
    if (m_daemon) {
        m_daemon->kill();
        m_daemon->waitForFinished();
    }
}

std::unique_ptr<QProcess> PrivateBus::process() const {
    auto process = std::make_unique<QProcess>();
    QProcessEnvironment environment;
    environment.insert(u"PATH"_s, qEnvironmentVariable("PATH"));
    environment.insert(u"HOME"_s, m_home.path());
    environment.insert(u"XDG_DATA_HOME"_s, folder(u"data"_s));
    environment.insert(u"XDG_CONFIG_HOME"_s, folder(u"config"_s));
    environment.insert(u"XDG_STATE_HOME"_s, folder(u"data"_s));
    environment.insert(u"XDG_CACHE_HOME"_s, folder(u"cache"_s));
    environment.insert(u"XDG_RUNTIME_DIR"_s, folder(u"run"_s));
    environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
    // Programs that the bus could start are none of this test's.
    environment.insert(u"XDG_DATA_DIRS"_s, folder(u"data"_s));
    for (const auto *variable : {"LSAN_OPTIONS", "LANG"}) {
        if (qEnvironmentVariableIsSet(variable))
            environment.insert(QLatin1String(variable), qEnvironmentVariable(variable));
    }
    if (!m_address.isEmpty())
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, m_address);
    process->setProcessEnvironment(environment);
    process->setChildProcessModifier([] { ::prctl(PR_SET_PDEATHSIG, SIGKILL); });
    return process;
}

bool PrivateBus::start() {
    const auto configuration = m_home.filePath(u"bus.conf"_s);
    QFile file(configuration);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.write("<!DOCTYPE busconfig PUBLIC \"-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN\""
               " \"http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd\"><busconfig>"
               "<type>session</type><listen>unix:tmpdir=" +
               QFile::encodeName(folder(u"run"_s)) + "</listen><servicedir>" +
               QFile::encodeName(servicesFolder()) +
               "</servicedir><policy context=\"default\"><allow send_destination=\"*\"/>"
               "<allow receive_sender=\"*\"/>"
               "<allow own=\"*\"/></policy></busconfig>");
    file.close();
    m_daemon = process();
    m_daemon->setStandardErrorFile(QProcess::nullDevice());
    m_daemon->start(u"dbus-daemon"_s,
                    {u"--nofork"_s, u"--print-address"_s, u"--config-file="_s + configuration});
    if (!m_daemon->waitForReadyRead())
        return false;
    m_address = QString::fromLatin1(m_daemon->readLine().trimmed());
    return true;
}
