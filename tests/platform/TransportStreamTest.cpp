#include "tests/platform/TransportTest.h"

#include <QElapsedTimer>
#include <QTimer>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// All that came of a streamed reply, and how it ended.
struct Reading {
    int status = 0;
    QByteArray bytes;
    qsizetype longestPiece = 0;
    std::string ending;
};

Task<void> readToEnd(std::unique_ptr<ByteStream> stream, std::shared_ptr<Reading> reading) {
    reading->status = stream->status();
    while (true) {
        auto next = stream->read();
        const QByteArray piece = co_await next;
        if (piece.isEmpty())
            co_return;
        reading->bytes += piece;
        reading->longestPiece = std::max(reading->longestPiece, piece.size());
    }
}

Task<void> follow(Task<std::unique_ptr<ByteStream>> opening, std::shared_ptr<Reading> reading) {
    try {
        std::unique_ptr<ByteStream> stream = co_await opening;
        auto whole = readToEnd(std::move(stream), reading);
        co_await whole;
        reading->ending = "whole";
    } catch (const URLError &error) {
        reading->ending = URLError::name(error.code()).toStdString();
    } catch (const CancellationError &) {
        reading->ending = "cancelled";
    }
}

class TransportStream : public TransportTest {
protected:
    std::shared_ptr<Reading> begin(const HttpRequest &request) {
        auto reading = std::make_shared<Reading>();
        follow(transport.stream(request, stop.get_token()), reading);
        return reading;
    }

    static bool ended(const std::shared_ptr<Reading> &reading) {
        return eventually([&] { return !reading->ending.empty(); });
    }

    Reading stream(const HttpRequest &request) {
        const auto reading = begin(request);
        EXPECT_TRUE(ended(reading));
        return *reading;
    }

    bool lastConnectionCloses() {
        const auto connection = service.requests().back().connection;
        return eventually([&] { return !service.isOpen(connection); });
    }
};

} // namespace

TEST_F(TransportStream, bytesAreThereBeforeTheReplyIsWhole) {
    const QByteArray body(20'000, 'x');
    for (const auto &answer :
         {ScriptedAnswer::reply(200, body), ScriptedAnswer::chunked(200, {body})}) {
        service.expect("POST", u"/run"_s, answer.stalledInBody());
        const auto reading = begin(postPath(u"/run"_s));
        EXPECT_TRUE(eventually([&] { return reading->bytes.size() > 9'900; }));
        EXPECT_EQ(reading->status, 200);
        EXPECT_LE(reading->longestPiece, 8192);
        EXPECT_EQ(reading->ending, "");
        EXPECT_TRUE(service.isOpen(service.requests().back().connection));
        stop.request_stop();
        EXPECT_TRUE(ended(reading));
        EXPECT_EQ(reading->ending, "cancelled");
        EXPECT_TRUE(lastConnectionCloses());
        stop = std::stop_source();
    }
}

TEST_F(TransportStream, endsInOneWayForEachFault) {
    const QByteArray body(3000, 'x');
    const auto whole = ScriptedAnswer::reply(200, body);
    const auto chunked = ScriptedAnswer::chunked(200, {body, QByteArray(200, 'y')});
    struct Row {
        ScriptedAnswer answer;
        int status;
        qsizetype least;
        const char *ending;
    };
    const std::vector<Row> rows = {
        {whole, 200, 3000, "whole"},
        {chunked, 200, 3200, "whole"},
        {whole.dripped(20, 5ms), 200, 3000, "whole"},
        {ScriptedAnswer::reply(200), 200, 0, "whole"},
        {ScriptedAnswer::raw("HTTP/1.1 200 OK\r\n\r\nto the end"), 200, 10, "whole"},
        {whole.cutInBody(), 200, 1500, "networkConnectionLost"},
        {chunked.cutInBody(), 200, 1600, "networkConnectionLost"},
        {whole.stalledInBody(), 200, 1500, "timedOut"},
        {ScriptedAnswer::reply(500, body).cutInBody(), 500, 1500, "networkConnectionLost"},
        {ScriptedAnswer::hangUp(), 0, 0, "networkConnectionLost"},
        {whole.cutInHead(), 0, 0, "networkConnectionLost"},
        {ScriptedAnswer::raw("220 mail ready\r\n"), 0, 0, "networkConnectionLost"},
        {ScriptedAnswer::silence(), 0, 0, "timedOut"},
        {whole.stalledInHead(), 0, 0, "timedOut"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.answer.bytes().left(60).toStdString() + " " + row.ending);
        const auto before = service.requests().size();
        service.expect("POST", u"/run"_s, row.answer);
        auto request = postPath(u"/run"_s);
        request.timeout = 300ms;
        const auto reading = stream(request);
        EXPECT_EQ(reading.ending, row.ending);
        EXPECT_EQ(reading.status, row.status);
        EXPECT_GE(reading.bytes.size(), row.least) << "what came is given before the failure";
        EXPECT_EQ(service.requests().size(), before + 1) << "a run that failed is not asked again";
        EXPECT_TRUE(lastConnectionCloses());
    }
    service.refuse();
    EXPECT_EQ(stream(postPath(u"/run"_s)).ending, "cannotConnectToHost");
    EXPECT_EQ(stream(get(u"file:///etc/hostname"_s)).ending, "badURL");
}

TEST_F(TransportStream, everyStatusIsAReplyAndNoRedirectIsFollowed) {
    for (const int status : {200, 204, 301, 302, 307, 308, 401, 404, 429, 500, 599}) {
        SCOPED_TRACE(status);
        const QByteArray body = status == 204 ? "" : R"({"error":"x"})";
        service.expect("POST", u"/run"_s,
                       ScriptedAnswer::reply(status, body)
                           .with("Location", "/elsewhere")
                           .with("WWW-Authenticate", "Basic realm=\"x\""));
        const auto reading = stream(withToken(postPath(u"/run"_s)));
        EXPECT_EQ(reading.status, status);
        EXPECT_EQ(reading.bytes, body);
        EXPECT_EQ(reading.ending, "whole");
    }
    EXPECT_EQ(service.requests().size(), 11U);
}

TEST_F(TransportStream, isAskedForOnceOnAConnectionOfItsOwnAndUncompressed) {
    service.always("GET", u"/first"_s, ScriptedAnswer::reply(200));
    service.expect("POST", u"/run"_s, ScriptedAnswer::reply(200, "answer"));
    service.expect("GET", u"/run"_s, ScriptedAnswer::reply(200, "answer"));
    for (const auto &request : {postPath(u"/run"_s, "once"), getPath(u"/run"_s)}) {
        ASSERT_EQ(ending(getPath(u"/first"_s)), "200");
        const auto kept = service.requests().back().connection;
        EXPECT_EQ(stream(withToken(request)).bytes, "answer");
        const auto seen = service.requests().back();
        EXPECT_GT(seen.connection, kept);
        EXPECT_EQ(seen.body, request.body.value_or(QByteArray()));
        EXPECT_EQ(seen.values("Accept-Encoding"), QList<QByteArray>{"identity"});
        EXPECT_EQ(seen.values("Authorization"), QList<QByteArray>{"Bearer secret"});
    }
}

TEST_F(TransportStream, aCancellationEndsItAtEveryStage) {
    const auto whole = ScriptedAnswer::reply(200, QByteArray(200'000, 'x'));
    for (const auto &answer :
         {ScriptedAnswer::silence(), whole.stalledInHead(), whole.stalledInBody(), whole}) {
        SCOPED_TRACE(answer.bytes().left(60).toStdString());
        stop = std::stop_source();
        service.expect("POST", u"/run"_s, answer);
        const auto reading = begin(postPath(u"/run"_s));
        const auto before = service.requests().size();
        ASSERT_TRUE(eventually([&] { return service.requests().size() > before; }));
        settleEventLoop();
        stop.request_stop();
        EXPECT_TRUE(ended(reading));
        EXPECT_EQ(reading->ending, "cancelled");
        EXPECT_TRUE(lastConnectionCloses());
    }
    EXPECT_EQ(stream(postPath(u"/never"_s)).ending, "cancelled") << "nothing is sent any more";
}

TEST_F(TransportStream, droppingItClosesTheConnection) {
    const auto whole = ScriptedAnswer::reply(200, QByteArray(200'000, 'x'));
    service.expect("POST", u"/run"_s, whole.stalledInBody());
    auto stream = await(transport.stream(postPath(u"/run"_s), stop.get_token()));
    EXPECT_EQ(await(stream->read()).size(), 8192);
    EXPECT_TRUE(service.isOpen(service.requests().back().connection));
    stream.reset();
    EXPECT_TRUE(lastConnectionCloses());
    stop.request_stop();
    settleEventLoop();
}

TEST_F(TransportStream, aServiceThatKeepsTalkingIsGivenTime) {
    service.expect("POST", u"/run"_s,
                   ScriptedAnswer::reply(200, QByteArray(2000, 'x')).dripped(16, 100ms));
    auto request = postPath(u"/run"_s);
    request.timeout = 1000ms;
    QElapsedTimer elapsed;
    elapsed.start();
    EXPECT_EQ(stream(request).bytes.size(), 2000);
    EXPECT_GT(elapsed.elapsed(), 1100) << "the whole must take longer than the allowed silence";
}

TEST_F(TransportStream, aFloodLeavesTheEventLoopItsTurns) {
    constexpr qsizetype size = 4'000'000;
    QByteArray body(size, Qt::Uninitialized);
    for (qsizetype at = 0; at < size; ++at)
        body[at] = static_cast<char>((at * 31 + at / 251) % 127);
    service.expect("POST", u"/run"_s, ScriptedAnswer::reply(200, body));
    int turns = 0;
    QTimer other;
    QObject::connect(&other, &QTimer::timeout, [&] { ++turns; });
    other.start(0);
    EXPECT_TRUE(stream(postPath(u"/run"_s)).bytes == body);
    EXPECT_GT(turns, size / 8192 / 2);
}
