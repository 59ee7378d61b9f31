#include "bench/StreamingService.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

namespace {

/// Words of some six letters, here and there a strong one, and a paragraph every hundred.
QByteArray piece(int number) {
    if (number % 100 == 99)
        return "\\n\\n";
    return number % 25 == 0 ? "**strong** " : "words ";
}

constexpr int interval = 10;

/// Bytes that are about as many pieces.
constexpr qsizetype bytesOfPieces(qsizetype pieces) {
    return pieces * 33;
}

void sendSteadily(QTcpSocket *socket, QByteArray bytes) {
    auto *timer = new QTimer(socket);
    QObject::connect(timer, &QTimer::timeout, socket, [socket, bytes]() mutable {
        const auto part = bytes.left(bytesOfPieces(StreamingService::steadyPieces * interval));
        socket->write(part);
        bytes.remove(0, part.size());
        if (bytes.isEmpty())
            socket->disconnectFromHost();
    });
    timer->start(interval);
}

} // namespace

StreamingService::StreamingService(int pieces, Pace pace) {
    QByteArray body;
    for (int number = 0; number < pieces; ++number) {
        const auto text = piece(number);
        body += R"({"type":"delta","text":")" + text + "\"}\n";
        m_answer += QString::fromLatin1(text).replace(QLatin1String("\\n"), QLatin1String("\n"));
    }
    body += "{\"type\":\"done\"}\n";
    m_reply = "HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " +
              QByteArray::number(body.size()) + "\r\n\r\n" + body;

    auto *server = new QTcpServer;
    server->listen(QHostAddress::LocalHost);
    m_port = server->serverPort();
    QObject::connect(server, &QTcpServer::newConnection, server, [this, server, pace] {
        auto *socket = server->nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, pace] {
            // The body is the last line of a request and ends with a brace.
            if (!socket->readAll().endsWith('}'))
                return;
            if (pace == Pace::steady) {
                sendSteadily(socket, m_reply);
                return;
            }
            socket->write(m_reply);
            socket->disconnectFromHost();
        });
    });
    QObject::connect(&m_thread, &QThread::finished, server, &QObject::deleteLater);
    server->moveToThread(&m_thread);
    m_thread.start();
}

StreamingService::~StreamingService() {
    m_thread.quit();
    m_thread.wait();
}

QString StreamingService::base() const {
    return QStringLiteral("http://127.0.0.1:%1").arg(m_port);
}
