#include "tests/support/ScriptedService.h"

#include <QTimer>
#include <QUrl>

#include <gtest/gtest.h>

#include <algorithm>

namespace {

QString scriptKey(const QByteArray &method, const QString &path) {
    return QString::fromLatin1(method) + QLatin1Char(' ') + path;
}

/// Takes one whole request off the front of the bytes, as soon as there is one.
std::optional<SeenRequest> takeRequest(QByteArray &bytes) {
    const auto headEnd = bytes.indexOf("\r\n\r\n");
    if (headEnd < 0)
        return std::nullopt;
    SeenRequest request;
    auto lines = bytes.left(headEnd).split('\n');
    const auto firstLine = lines.takeFirst().trimmed().split(' ');
    if (firstLine.size() != 3 || firstLine[2] != "HTTP/1.1") {
        ADD_FAILURE() << "not a request: " << bytes.left(200).constData();
        bytes.clear();
        return std::nullopt;
    }
    for (const auto &line : lines) {
        const auto colon = line.indexOf(':');
        request.headers.append({line.left(colon).trimmed(), line.mid(colon + 1).trimmed()});
    }
    EXPECT_TRUE(request.values("Transfer-Encoding").isEmpty()) << "bodies come with their length";
    const auto lengths = request.values("Content-Length");
    const auto length = lengths.isEmpty() ? 0 : lengths.first().toLongLong();
    const auto bodyStart = headEnd + 4;
    if (bytes.size() < bodyStart + length)
        return std::nullopt;

    request.method = firstLine[0];
    request.target = firstLine[1];
    request.path = QUrl::fromEncoded(request.target, QUrl::StrictMode).path(QUrl::FullyDecoded);
    request.body = bytes.mid(bodyStart, length);
    bytes.remove(0, bodyStart + length);
    return request;
}

} // namespace

QList<QByteArray> SeenRequest::values(const QByteArray &header) const {
    QList<QByteArray> result;
    for (const auto &[name, value] : headers) {
        if (name.compare(header, Qt::CaseInsensitive) == 0)
            result.append(value);
    }
    return result;
}

ScriptedService::ScriptedService() {
    connect(&m_server, &QTcpServer::newConnection, this, &ScriptedService::accept);
    if (!m_server.listen(QHostAddress::LocalHost))
        qFatal("no free port on this machine");
    m_port = m_server.serverPort();
}

ScriptedService::~ScriptedService() {
    for (auto entry = m_script.cbegin(); entry != m_script.cend(); ++entry)
        EXPECT_TRUE(entry->once.isEmpty()) << "never asked for: " << qPrintable(entry.key());
    for (const auto &connection : std::as_const(m_connections)) {
        if (connection.socket)
            connection.socket->disconnect(this);
    }
}

void ScriptedService::expect(const QByteArray &method, const QString &path,
                             const ScriptedAnswer &answer) {
    m_script[scriptKey(method, path)].once.append(answer);
}

void ScriptedService::always(const QByteArray &method, const QString &path,
                             const ScriptedAnswer &answer) {
    m_script[scriptKey(method, path)].always = answer;
}

void ScriptedService::release() {
    const auto held = std::exchange(m_held, {});
    for (const auto &one : held)
        send(one.connection, one.answer);
}

void ScriptedService::refuse() {
    m_server.close();
    for (const auto &connection : std::as_const(m_connections)) {
        if (connection.socket)
            connection.socket->disconnectFromHost();
    }
}

QString ScriptedService::base(const QString &host) const {
    return QStringLiteral("http://%1:%2").arg(host).arg(m_port);
}

qsizetype ScriptedService::count(const QString &path) const {
    return std::count_if(m_requests.begin(), m_requests.end(),
                         [&](const SeenRequest &request) { return request.path == path; });
}

bool ScriptedService::isOpen(int connection) const {
    const auto socket = m_connections.value(connection).socket;
    return socket && socket->state() == QAbstractSocket::ConnectedState;
}

void ScriptedService::accept() {
    while (auto *socket = m_server.nextPendingConnection()) {
        const auto number = static_cast<int>(m_connections.size()) + 1;
        m_connections[number].socket = socket;
        connect(socket, &QTcpSocket::readyRead, this, [this, number] { read(number); });
        connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        read(number);
    }
}

void ScriptedService::read(int number) {
    auto &connection = m_connections[number];
    connection.unread += connection.socket->readAll();
    while (auto request = takeRequest(connection.unread)) {
        request->connection = number;
        m_requests.push_back(*request);
        serve(*request);
    }
}

void ScriptedService::serve(const SeenRequest &request) {
    const auto answer = nextAnswer(request);
    if (!answer) {
        ADD_FAILURE() << "not in the script: " << request.method.constData() << " "
                      << request.target.constData();
        send(request.connection, ScriptedAnswer::hangUp());
    } else if (answer->isHeld()) {
        m_held.append(Held{request.connection, *answer});
    } else {
        send(request.connection, *answer);
    }
}

std::optional<ScriptedAnswer> ScriptedService::nextAnswer(const SeenRequest &request) {
    auto &script = m_script[scriptKey(request.method, request.path)];
    if (!script.once.isEmpty())
        return script.once.takeFirst();
    return script.always;
}

void ScriptedService::send(int number, const ScriptedAnswer &answer) {
    const auto socket = m_connections.value(number).socket;
    if (!socket)
        return;
    if (answer.pieces() == 1) {
        socket->write(answer.bytes());
        if (answer.closesConnection())
            socket->disconnectFromHost();
        return;
    }
    auto *timer = new QTimer(socket);
    const auto size = answer.bytes().size() / answer.pieces() + 1;
    connect(timer, &QTimer::timeout, socket,
            [socket, timer, size, rest = answer.bytes()]() mutable {
                socket->write(rest.left(size));
                rest.remove(0, size);
                if (rest.isEmpty())
                    timer->stop();
            });
    timer->start(answer.interval());
}
