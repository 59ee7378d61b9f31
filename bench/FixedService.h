#pragma once

#include <QByteArray>
#include <QString>
#include <QThread>

/// A service in a thread of its own that answers every request that has a body with the same one.
class FixedService final {
public:
    /// So many bytes in each millisecond, or all as fast as the connection takes them.
    static constexpr qsizetype steadyBytes = 165;
    enum class Pace { steady, flood };

    /// With a path it answers the GET requests whose path begins so instead, and hangs up on
    /// others.
    FixedService(const QByteArray &body, Pace pace, const QByteArray &path = {});
    ~FixedService();
    Q_DISABLE_COPY_MOVE(FixedService)

    QString base() const;

private:
    QByteArray m_reply;
    quint16 m_port = 0;
    QThread m_thread;
};
