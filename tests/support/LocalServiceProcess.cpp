#include "tests/support/LocalServiceProcess.h"

#include "tests/support/Await.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

LocalServiceProcess::LocalServiceProcess() = default;
LocalServiceProcess::~LocalServiceProcess() {
    stop();
}

bool LocalServiceProcess::start() {
    QDir().mkpath(m_home.filePath(QStringLiteral("config/quillmere-service")));
    QFile configuration(m_home.filePath(QStringLiteral("config/quillmere-service/service.json")));
    if (!configuration.open(QIODevice::WriteOnly))
        return false;
    configuration.write(QStringLiteral("{\"port\": %1}").arg(m_port).toUtf8());
    configuration.close();

    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"),
                       m_home.filePath(QStringLiteral("config")));
    environment.insert(QStringLiteral("XDG_DATA_HOME"), m_home.filePath(QStringLiteral("data")));
    m_process.setProcessEnvironment(environment);
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(QStringLiteral(SERVICE_PROGRAM), QStringList());

    QByteArray output;
    // On a busy machine the first start, which makes the database, takes its time.
    constexpr std::chrono::seconds startLimit(60);
    static const QRegularExpression listening(QStringLiteral("http://127\\.0\\.0\\.1:(\\d+)"));
    return eventually(
        [&] {
            output += m_process.readAll();
            const auto match = listening.match(QString::fromUtf8(output));
            m_port = match.captured(1).toInt();
            return match.hasMatch();
        },
        startLimit);
}

void LocalServiceProcess::stop() {
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    m_process.waitForFinished();
}

QString LocalServiceProcess::base() const {
    return QStringLiteral("http://127.0.0.1:%1").arg(m_port);
}
