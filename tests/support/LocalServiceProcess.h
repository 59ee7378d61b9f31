#pragma once

#include <QProcess>
#include <QTemporaryDir>

/// The real local service, as a process with directories of its own.
class LocalServiceProcess final {
public:
    LocalServiceProcess();
    ~LocalServiceProcess();

    /// Starts it, on the same port as before if there was one. False when it does not come up.
    [[nodiscard]] bool start();
    void stop();

    /// "http://127.0.0.1:<port>"; valid once it has been started.
    QString base() const;

private:
    QTemporaryDir m_home;
    QProcess m_process;
    int m_port = 0;
};
