#pragma once

#include <QByteArray>
#include <QString>
#include <QThread>

/// A service in a thread of its own that answers every request with the same long answer.
class StreamingService final {
public:
    /// So many pieces in each millisecond, or all as fast as the connection takes them.
    enum class Pace { steady, flood };
    static constexpr int steadyPieces = 5;

    StreamingService(int pieces, Pace pace);
    ~StreamingService();
    Q_DISABLE_COPY_MOVE(StreamingService)

    QString base() const;
    /// The text of the answer.
    QString answer() const { return m_answer; }

private:
    QByteArray m_reply;
    QString m_answer;
    quint16 m_port = 0;
    QThread m_thread;
};
