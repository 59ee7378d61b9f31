#include "tests/platform/TransportTest.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

class TransportFailure : public TransportTest {};

HttpRequest impatient(HttpRequest request, std::chrono::milliseconds timeout = 150ms) {
    request.timeout = timeout;
    return request;
}

} // namespace

TEST_F(TransportFailure, aPostThatIsReadAndDroppedArrivesOnce) {
    const auto whole = ScriptedAnswer::reply(200, "{\"items\":[]}");
    for (const auto &answer : {ScriptedAnswer::hangUp(), whole.cutInHead(), whole.cutInBody()}) {
        SCOPED_TRACE(answer.bytes().constData());
        const auto before = service.requests().size();
        service.always("POST", u"/v1/chat/runs"_s, answer);
        EXPECT_EQ(ending(postPath(u"/v1/chat/runs"_s)), "networkConnectionLost");
        // By the time that a later request is answered, a repeated one would have been seen.
        service.expect("GET", u"/after"_s, ScriptedAnswer::reply(200));
        EXPECT_EQ(ending(getPath(u"/after"_s)), "200");
        EXPECT_EQ(service.requests().size(), before + 2);
    }
}

TEST_F(TransportFailure, aReplyThatBreaksOffIsNoReply) {
    const auto whole = ScriptedAnswer::reply(200, QByteArray(3000, 'x'));
    const auto chunked =
        ScriptedAnswer::chunked(200, {QByteArray(3000, 'x'), QByteArray(200, 'y')});
    const auto failed = ScriptedAnswer::reply(500, QByteArray(3000, 'x'));
    for (const auto &answer : {ScriptedAnswer::hangUp(), whole.cutInHead(), whole.cutInBody(),
                               chunked.cutInBody(), failed.cutInBody()}) {
        SCOPED_TRACE(answer.bytes().left(120).constData());
        service.always("GET", u"/broken"_s, answer);
        EXPECT_EQ(ending(getPath(u"/broken"_s)), "networkConnectionLost");
    }
}

TEST_F(TransportFailure, anythingButHttpIsABrokenConnection) {
    const QList<QByteArray> answers = {
        "SSH-2.0-Server\r\n",
        "220 mail ready\r\n",
        QByteArray("\x15\x03\x01\x00\x02\x02\x16", 7),
        "\r\n\r\n\r\n",
        "HTTP/1.1 nonsense\r\n\r\n",
        "<!doctype html><title>Hello</title>\n\n",
    };
    for (const auto &bytes : answers) {
        SCOPED_TRACE(bytes.toPercentEncoding(" ").constData());
        service.always("GET", u"/odd"_s, ScriptedAnswer::raw(bytes));
        service.expect("POST", u"/odd"_s, ScriptedAnswer::raw(bytes));
        EXPECT_EQ(ending(getPath(u"/odd"_s)), "networkConnectionLost");
        EXPECT_EQ(ending(postPath(u"/odd"_s)), "networkConnectionLost");
    }
}

TEST_F(TransportFailure, aDamagedCompressedBodyIsNoReply) {
    service.expect("GET", u"/packed"_s,
                   ScriptedAnswer::reply(200, "this was never compressed at all")
                       .with("Content-Encoding", "gzip"));
    EXPECT_EQ(ending(getPath(u"/packed"_s)), "badServerResponse");
}

TEST_F(TransportFailure, aServiceThatCannotBeReachedIsNamedAsSuch) {
    const auto base = service.base();
    service.expect("GET", u"/first"_s, ScriptedAnswer::reply(200));
    ASSERT_EQ(ending(getPath(u"/first"_s)), "200");
    service.refuse();
    EXPECT_EQ(ending(get(base + u"/health"_s)), "cannotConnectToHost");
    EXPECT_EQ(ending(postPath(u"/health"_s)), "cannotConnectToHost");
    EXPECT_EQ(ending(get(u"http://no-such-host.invalid/health"_s)), "cannotFindHost");
}

TEST_F(TransportFailure, aSecureConnectionToAPlainServiceFails) {
    QTcpServer plain;
    ASSERT_TRUE(plain.listen(QHostAddress::LocalHost));
    QObject::connect(&plain, &QTcpServer::newConnection, &plain, [&] {
        auto *socket = plain.nextPendingConnection();
        QObject::connect(socket, &QTcpSocket::readyRead, socket, [socket] {
            socket->readAll();
            socket->write("HTTP/1.1 400 Bad Request\r\nContent-Length: 0\r\n\r\n");
            socket->disconnectFromHost();
        });
    });
    EXPECT_EQ(ending(get(u"https://127.0.0.1:%1/"_s.arg(plain.serverPort()))),
              "secureConnectionFailed");
}

TEST_F(TransportFailure, anAddressThatLeadsNowhereIsRefusedAtOnce) {
    for (const auto &address : {u""_s, u"/v1/health"_s, u"http://"_s, u"file:///etc/hostname"_s,
                                u"data:,text"_s, u"mailto:a@example.org"_s}) {
        SCOPED_TRACE(address.toStdString());
        EXPECT_EQ(ending(get(address)), "badURL");
    }
    EXPECT_EQ(ending(get(u"gopher://127.0.0.1/"_s)), "badURL");
}

TEST_F(TransportFailure, silenceEndsInATimeOut) {
    const auto whole = ScriptedAnswer::reply(200, QByteArray(3000, 'x'));
    for (const auto &answer :
         {ScriptedAnswer::silence(), whole.stalledInHead(), whole.stalledInBody()}) {
        SCOPED_TRACE(answer.bytes().left(120).constData());
        service.always("GET", u"/slow"_s, answer);
        service.always("POST", u"/slow"_s, answer);
        for (const auto &request : {getPath(u"/slow"_s), postPath(u"/slow"_s)}) {
            QElapsedTimer elapsed;
            elapsed.start();
            EXPECT_EQ(ending(impatient(request)), "timedOut");
            EXPECT_GE(elapsed.elapsed(), 140);
            const auto connection = service.requests().back().connection;
            EXPECT_TRUE(eventually([&] { return !service.isOpen(connection); }));
        }
    }
    EXPECT_EQ(service.count(u"/slow"_s), 6) << "a request that timed out is not sent again";
}

TEST_F(TransportFailure, aServiceThatKeepsTalkingIsGivenTime) {
    const QByteArray body(2000, 'x');
    const auto slow = ScriptedAnswer::reply(200, body).dripped(16, 100ms);
    service.expect("GET", u"/slow"_s, slow);
    service.expect("POST", u"/slow"_s, slow);
    auto reading = send(impatient(getPath(u"/slow"_s), 1000ms));
    auto posting = send(impatient(postPath(u"/slow"_s), 1000ms));
    QElapsedTimer elapsed;
    elapsed.start();
    EXPECT_EQ(await(std::move(reading)).body, body);
    EXPECT_EQ(await(std::move(posting)).body, body);
    EXPECT_GT(elapsed.elapsed(), 1100) << "the whole must take longer than the allowed silence";
}

TEST_F(TransportFailure, aTimeOutAndACancellationAreToldApart) {
    service.always("GET", u"/slow"_s, ScriptedAnswer::silence());
    auto timed = send(impatient(getPath(u"/slow"_s)));
    auto patient = send(getPath(u"/slow"_s));
    ASSERT_TRUE(eventually([&] { return service.count(u"/slow"_s) == 2; }));
    EXPECT_EQ(ending(std::move(timed)), "timedOut");
    stop.request_stop();
    EXPECT_EQ(ending(std::move(patient)), "cancelled");
}
