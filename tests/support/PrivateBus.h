#pragma once

#include <QProcess>
#include <QTemporaryDir>

#include <memory>

/// A session bus of one test alone, with a home for those who use it. Both end with the object, and
/// with the process. Whatever the bus is to start needs a file in the folder of services.
class PrivateBus final {
public:
    PrivateBus();
    ~PrivateBus();
    Q_DISABLE_COPY_MOVE(PrivateBus)

    bool start();

    QString address() const { return m_address; }
    QString servicesFolder() const { return m_home.filePath(QStringLiteral("services")); }
    /// An empty folder of the home: "data", "config", "cache" or "run".
    QString folder(const QString &name) const { return m_home.filePath(name); }

    /// A process, not started yet, that lives on this bus and in this home.
    std::unique_ptr<QProcess> process() const;

private:
    QTemporaryDir m_home;
    std::unique_ptr<QProcess> m_daemon;
    QString m_address;
};
