#pragma once

#include "tests/support/ScriptedAnswer.h"

#include <QHash>
#include <QPointer>
#include <QString>
#include <QTcpServer>
#include <QTcpSocket>

#include <optional>
#include <utility>
#include <vector>

/// A request as the service read it.
struct SeenRequest {
    QByteArray method;
    /// Path and query as they came over the wire.
    QByteArray target;
    /// Decoded.
    QString path;
    QList<std::pair<QByteArray, QByteArray>> headers;
    QByteArray body;
    /// Connections are numbered from 1 in the order of their arrival.
    int connection = 0;

    /// Every value of the header, in order.
    QList<QByteArray> values(const QByteArray &header) const;
};

/// An HTTP service on a free port of this machine whose answers are data. It runs in the event loop
/// of the test. A request that is not in the script fails the test, and so does an answer that
/// nobody asked for.
class ScriptedService final : public QObject {
public:
    ScriptedService();
    ~ScriptedService() override;

    /// The next answer to such a request; several are given in the order of the calls.
    void expect(const QByteArray &method, const QString &path, const ScriptedAnswer &answer);

    /// The answer to every such request, however often it comes.
    void always(const QByteArray &method, const QString &path, const ScriptedAnswer &answer);

    /// Lets held answers go out.
    void release();

    /// Closes the listening socket and every connection: from now on connections are refused.
    void refuse();

    /// "http://127.0.0.1:<port>"
    QString base() const { return base(QStringLiteral("127.0.0.1")); }
    /// The same service under another name of this machine.
    QString base(const QString &host) const;

    const std::vector<SeenRequest> &requests() const { return m_requests; }
    qsizetype count(const QString &path) const;

    bool isOpen(int connection) const;

private:
    struct Connection {
        QPointer<QTcpSocket> socket;
        QByteArray unread;
    };

    struct Held {
        int connection;
        ScriptedAnswer answer;
    };

    struct Script {
        QList<ScriptedAnswer> once;
        std::optional<ScriptedAnswer> always;
    };

    void accept();
    void read(int number);
    void serve(const SeenRequest &request);
    void send(int number, const ScriptedAnswer &answer);
    std::optional<ScriptedAnswer> nextAnswer(const SeenRequest &request);

    QTcpServer m_server;
    quint16 m_port = 0;
    QHash<int, Connection> m_connections;
    QHash<QString, Script> m_script;
    QList<Held> m_held;
    std::vector<SeenRequest> m_requests;
};
