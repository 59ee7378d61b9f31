#include "tests/platform/TransportTest.h"

#include <QElapsedTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using TransportFailure = TransportTest;

TEST_F(TransportFailure, aReplyEndsInOneWayForEachFault) {
    const QByteArray body(3000, 'x');
    const auto whole = ScriptedAnswer::reply(200, body);
    const auto chunked = ScriptedAnswer::chunked(200, {body, QByteArray(200, 'y')});
    const auto *lost = "networkConnectionLost";
    struct Row {
        ScriptedAnswer answer;
        const char *ending;
        /// What a reader of the stream has by then.
        int status = 0;
        qsizetype least = 0;
    };
    const std::vector<Row> rows = {
        {whole, "whole", 200, 3000},
        {chunked, "whole", 200, 3200},
        {whole.dripped(20, 5ms), "whole", 200, 3000},
        {ScriptedAnswer::reply(200), "whole", 200},
        {ScriptedAnswer::raw("HTTP/1.1 200 OK\r\n\r\nto the end"), "whole", 200, 10},
        {ScriptedAnswer::raw("HTTP/1.0 200 OK\r\n\r\nto the end"), "whole", 200, 10},
        {whole.cutInBody(), lost, 200, 1500},
        {chunked.cutInBody(), lost, 200, 1600},
        {ScriptedAnswer::reply(500, body).cutInBody(), lost, 500, 1500},
        {ScriptedAnswer::hangUp(), lost},
        {whole.cutInHead(), lost},
        {ScriptedAnswer::raw("SSH-2.0-Server\r\n"), lost},
        {ScriptedAnswer::raw(QByteArray("\x15\x03\x01\x00\x02\x02\x16", 7)), lost},
        {ScriptedAnswer::raw("\r\n\r\n\r\n"), lost},
        {ScriptedAnswer::raw("HTTP/1.1 nonsense\r\n\r\n"), lost},
        {ScriptedAnswer::raw("<!doctype html><title>Hello</title>\n\n"), lost},
        {ScriptedAnswer::silence(), "timedOut"},
        {whole.stalledInHead(), "timedOut"},
        {whole.stalledInBody(), "timedOut", 200, 1500},
    };
    for (const auto &row : rows) {
        for (auto [way, request] : everyRequest(u"/v1/chat/runs"_s)) {
            SCOPED_TRACE((request.method + row.answer.bytes().left(60)).toStdString() + row.ending);
            const auto before = service.requests().size();
            service.always(request.method, u"/v1/chat/runs"_s, row.answer);
            request.timeout = 300ms;
            QElapsedTimer elapsed;
            elapsed.start();
            const auto reading = read(way, request);
            EXPECT_EQ(reading.ending, row.ending);
            if (way == Way::streamed || reading.ending == "whole") {
                EXPECT_EQ(reading.status, row.status);
                EXPECT_GE(reading.bytes.size(), row.least) << "what came is given first";
            }
            if (reading.ending == "timedOut") {
                EXPECT_GE(elapsed.elapsed(), 280);
            }
            if (request.method == "POST" || reading.ending == "timedOut") {
                EXPECT_TRUE(lastConnectionCloses());
                // By the time that a later request is answered, a repeated one would have come.
                service.expect("GET", u"/after"_s, ScriptedAnswer::reply(200));
                EXPECT_EQ(ending(getPath(u"/after"_s)), "200");
                EXPECT_EQ(service.requests().size(), before + 2) << "asked again";
            }
        }
    }
}

TEST_F(TransportFailure, aDamagedCompressedBodyIsNoReply) {
    service.expect("GET", u"/packed"_s,
                   ScriptedAnswer::reply(200, "this was never compressed at all")
                       .with("Content-Encoding", "gzip"));
    EXPECT_EQ(ending(getPath(u"/packed"_s)), "badServerResponse");
}

TEST_F(TransportFailure, aServiceThatCannotBeReachedIsNamedAsSuch) {
    service.expect("GET", u"/first"_s, ScriptedAnswer::reply(200));
    ASSERT_EQ(ending(getPath(u"/first"_s)), "200");
    service.refuse();
    for (const auto &[way, request] : everyRequest(u"/health"_s))
        EXPECT_EQ(read(way, request).ending, "cannotConnectToHost");
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
    for (const auto *address : {"", "/v1/health", "http://", "file:///etc/hostname", "data:,text",
                                "mailto:a@example.org", "gopher://127.0.0.1/"}) {
        for (const auto way : {Way::whole, Way::streamed})
            EXPECT_EQ(read(way, get(QLatin1String(address))).ending, "badURL") << address;
    }
}

TEST_F(TransportFailure, aServiceThatKeepsTalkingIsGivenTime) {
    const QByteArray body(2000, 'x');
    QElapsedTimer elapsed;
    elapsed.start();
    std::vector<std::shared_ptr<Reading>> readings;
    for (auto [way, request] : everyRequest(u"/slow"_s)) {
        service.expect(request.method, u"/slow"_s,
                       ScriptedAnswer::reply(200, body).dripped(16, 100ms));
        request.timeout = 1000ms;
        readings.push_back(begin(way, request));
    }
    EXPECT_TRUE(eventually([&] { return readings.back()->bytes.size() > 250; }));
    EXPECT_LT(readings.back()->bytes.size(), 1500) << "a stream is given as it comes";
    for (const auto &reading : readings) {
        EXPECT_TRUE(ended(reading));
        EXPECT_EQ(reading->bytes, body) << reading->ending;
    }
    EXPECT_GT(elapsed.elapsed(), 1100) << "the whole must take longer than the allowed silence";
}
