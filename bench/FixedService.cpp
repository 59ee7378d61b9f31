#include "bench/FixedService.h"

#include <QTcpServer>
#include <QTcpSocket>
#include <QTimer>

namespace {

constexpr int interval = 10;

void sendSteadily(QTcpSocket *socket, QByteArray bytes) {
    auto *timer = new QTimer(socket);
    QObject::connect(timer, &QTimer::timeout, socket, [socket, bytes]() mutable {
        const auto part = bytes.left(FixedService::steadyBytes * interval);
        socket->write(part);
        bytes.remove(0, part.size());
        if (bytes.isEmpty())
            socket->disconnectFromHost();
    });
    timer->start(interval);
}

} // namespace

FixedService::FixedService(const QByteArray &body, Pace pace, const QByteArray &path)
    : m_reply("HTTP/1.1 200 OK\r\nConnection: close\r\nContent-Length: " +
              QByteArray::number(body.size()) + "\r\n\r\n" + body) {
    auto *server = new QTcpServer;
    server->listen(QHostAddress::LocalHost);
    m_port = server->serverPort();
    QObject::connect(server, &QTcpServer::newConnection, server, [this, server, pace, path] {
        auto *socket = server->nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::disconnected, socket, &QObject::deleteLater);
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [this, socket, pace, path] {
            const auto request = socket->readAll();
            if (path.isEmpty()) {
                // The body is the last line of a request and ends with a brace.
                if (!request.endsWith('}'))
                    return;
            } else if (!request.startsWith("GET " + path)) {
                socket->disconnectFromHost();
                return;
            }
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

FixedService::~FixedService() {
    m_thread.quit();
    m_thread.wait();
}

QString FixedService::base() const {
    return QStringLiteral("http://127.0.0.1:%1").arg(m_port);
}
