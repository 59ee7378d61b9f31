#include "tests/platform/TransportTest.h"

#include <QLocale>
#include <QTimer>

#include <set>

using namespace Qt::StringLiterals;

namespace {

using TransportRequest = TransportTest;

/// Bytes that differ along the way, so that a lost or doubled piece shows.
QByteArray longBody(qsizetype size) {
    QByteArray body(size, Qt::Uninitialized);
    for (qsizetype index = 0; index < size; ++index)
        body[index] = static_cast<char>((index * 31 + index / 251) % 127);
    return body;
}

} // namespace

TEST_F(TransportRequest, headersAreNeutralAndThoseOfTheRequestStand) {
    QLocale::setDefault(QLocale(u"de_AT"_s));
    service.expect("GET", u"/v1/health"_s, ScriptedAnswer::reply(200));
    service.expect("POST", u"/v1/wall"_s, ScriptedAnswer::reply(200));
    ASSERT_EQ(ending(withToken(getPath(u"/v1/health"_s))), "200");
    ASSERT_EQ(ending(withToken(postPath(u"/v1/wall"_s, "{\"a\":\"\xc3\xa9\"}"))), "200");

    for (const auto &request : service.requests()) {
        SCOPED_TRACE(request.method.constData());
        EXPECT_EQ(request.values("Accept-Language"), QList<QByteArray>{"*"});
        EXPECT_EQ(request.values("User-Agent"), QList<QByteArray>{"Quillmere"});
        EXPECT_EQ(request.values("Authorization"), QList<QByteArray>{"Bearer secret"});
        EXPECT_TRUE(request.values("Cookie").isEmpty());
        std::set<QByteArray> names;
        for (const auto &[name, value] : request.headers)
            EXPECT_TRUE(names.insert(name.toLower()).second) << "twice: " << name.constData();
        for (const auto *usual :
             {"accept-language", "user-agent", "authorization", "host", "connection",
              "accept-encoding", "content-type", "content-length"})
            names.erase(usual);
        EXPECT_TRUE(names.empty()) << "unexpected: " << names.begin()->constData();
    }
    const auto &post = service.requests().back();
    EXPECT_EQ(post.values("Content-Type"), QList<QByteArray>{"application/json"});
    EXPECT_EQ(post.body, "{\"a\":\"\xc3\xa9\"}");
}

TEST_F(TransportRequest, addressesGoOutAsTheyAreWritten) {
    const QByteArray target = "/v1/cases/a%2Fb/%3Fid%23?q=a%2Bb%20c%26&archive=&locale=pt-BR";
    service.expect("GET", u"/v1/cases/a/b/?id#"_s, ScriptedAnswer::reply(200));
    auto request = getPath({});
    request.url = QUrl::fromEncoded(service.base().toLatin1() + target, QUrl::StrictMode);
    EXPECT_EQ(ending(request), "200");
    EXPECT_EQ(service.requests().back().target, target);
}

TEST_F(TransportRequest, noCookieComesBack) {
    for (const auto *cookie : {"plain=1", "site=1; Path=/; Max-Age=3600; HttpOnly"})
        service.expect("GET", u"/a"_s, ScriptedAnswer::reply(200).with("Set-Cookie", cookie));
    service.expect("POST", u"/a"_s, ScriptedAnswer::reply(200).with("Set-Cookie", "post=1"));
    service.expect("GET", u"/b"_s, ScriptedAnswer::reply(200));
    for (const auto &request :
         {getPath(u"/a"_s), getPath(u"/a"_s), postPath(u"/a"_s), getPath(u"/b"_s)})
        ASSERT_EQ(ending(request), "200");
    for (const auto &request : service.requests())
        EXPECT_TRUE(request.values("Cookie").isEmpty());
}

TEST_F(TransportRequest, aChallengeIsAPlainReplyAndLeavesNothingBehind) {
    const QByteArray body = R"({"error":"signin_required"})";
    for (const auto *challenge : {"Basic realm=\"x\"", "Bearer", "NTLM", "Negotiate",
                                  "Digest realm=\"x\", nonce=\"y\", qop=\"auth\""}) {
        SCOPED_TRACE(challenge);
        const auto refusal = ScriptedAnswer::reply(401, body).with("WWW-Authenticate", challenge);
        const auto before = service.requests().size();
        for (const auto &[way, request] : everyRequest(u"/me"_s)) {
            service.expect(request.method, u"/me"_s, refusal);
            const auto reading = read(way, way == Way::whole ? withToken(request) : request);
            EXPECT_EQ(reading.status, 401);
            EXPECT_EQ(reading.bytes, body);
        }
        service.expect("GET", u"/open"_s, ScriptedAnswer::reply(200));
        EXPECT_EQ(ending(getPath(u"/open"_s)), "200");
        EXPECT_EQ(service.requests().size(), before + 4);
        EXPECT_TRUE(service.requests().back().values("Authorization").isEmpty());
    }
}

TEST_F(TransportRequest, everyStatusIsAReplyWithItsBody) {
    for (const int status : {200, 201, 204, 206, 299, 400, 401, 403, 404, 405, 409, 410, 418, 429,
                             500, 502, 503, 599}) {
        SCOPED_TRACE(status);
        const QByteArray body = status == 204 ? "" : R"({"error":"x"})";
        for (const auto &[way, request] : everyRequest(u"/x"_s)) {
            service.expect(request.method, u"/x"_s, ScriptedAnswer::reply(status, body));
            const auto reading = read(way, request);
            EXPECT_EQ(reading.status, status);
            EXPECT_EQ(reading.bytes, body);
        }
    }
    service.expect("POST", u"/empty"_s, ScriptedAnswer::reply(200));
    EXPECT_EQ(ending(postPath(u"/empty"_s, {})), "200");
    EXPECT_EQ(service.requests().back().body, QByteArray());
}

TEST_F(TransportRequest, largeBodiesPassWholeInBothDirections) {
    const auto reply = longBody(20'000'000);
    const auto upload = longBody(8'000'000);
    service.expect("GET", u"/large"_s, ScriptedAnswer::reply(200, reply));
    service.expect("POST", u"/large"_s, ScriptedAnswer::chunked(200, {upload, upload}));
    EXPECT_TRUE(response(getPath(u"/large"_s)).body == reply);
    EXPECT_TRUE(response(postPath(u"/large"_s, upload)).body == upload + upload);
    EXPECT_TRUE(service.requests().back().body == upload);
}

TEST_F(TransportRequest, manyAtOnceEachGetTheirOwn) {
    constexpr int count = 60;
    std::vector<Task<HttpResponse>> tasks;
    for (int number = 0; number < count; ++number) {
        const auto path = u"/v1/%1"_s.arg(number);
        const QByteArray method = number % 3 == 0 ? "POST" : "GET";
        service.expect(method, path, ScriptedAnswer::reply(200, QByteArray::number(number)));
        tasks.push_back(send(number % 3 == 0 ? postPath(path) : getPath(path)));
    }
    for (int number = 0; number < count; ++number)
        EXPECT_EQ(await(std::move(tasks[number])).body, QByteArray::number(number));
    EXPECT_EQ(service.requests().size(), static_cast<std::size_t>(count));
}

TEST_F(TransportRequest, aGetOutlivesAConnectionThatWentStale) {
    service.expect("GET", u"/first"_s, ScriptedAnswer::reply(200));
    service.expect("GET", u"/second"_s, ScriptedAnswer::reply(200).thenClosed());
    service.expect("GET", u"/third"_s, ScriptedAnswer::reply(200, "whole"));
    ASSERT_EQ(ending(getPath(u"/first"_s)), "200");
    ASSERT_EQ(ending(getPath(u"/second"_s)), "200");
    ASSERT_EQ(service.requests()[0].connection, service.requests()[1].connection) << "kept open";
    EXPECT_EQ(response(getPath(u"/third"_s)).body, "whole");
}

TEST_F(TransportRequest, aPostAndAStreamNeverTravelOnAKeptConnection) {
    service.always("GET", u"/first"_s, ScriptedAnswer::reply(200));
    service.always("GET", u"/stale"_s, ScriptedAnswer::reply(200).thenClosed());
    const std::pair<Way, HttpRequest> requests[] = {{Way::whole, postPath(u"/run"_s, "once")},
                                                    {Way::streamed, postPath(u"/run"_s, "once")},
                                                    {Way::streamed, getPath(u"/run"_s)}};
    for (const auto &before : {u"/first"_s, u"/stale"_s}) {
        for (const auto &[way, request] : requests) {
            ASSERT_EQ(ending(getPath(before)), "200");
            const auto kept = service.requests().back().connection;
            service.expect(request.method, u"/run"_s, ScriptedAnswer::reply(200, "answer"));
            EXPECT_EQ(read(way, withToken(request)).bytes, "answer");
            const auto seen = service.requests().back();
            EXPECT_GT(seen.connection, kept);
            EXPECT_EQ(seen.body, request.body.value_or(QByteArray()));
            EXPECT_EQ(seen.values("Authorization"), QList<QByteArray>{"Bearer secret"});
            if (way == Way::streamed) {
                EXPECT_EQ(seen.values("Accept-Encoding"), QList<QByteArray>{"identity"});
            }
        }
    }
    EXPECT_EQ(service.count(u"/run"_s), 6);
}

TEST_F(TransportRequest, aDroppedStreamClosesItsConnection) {
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

TEST_F(TransportRequest, aFloodLeavesTheEventLoopItsTurns) {
    const auto body = longBody(4'000'000);
    service.expect("POST", u"/run"_s, ScriptedAnswer::reply(200, body));
    int turns = 0;
    QTimer other;
    QObject::connect(&other, &QTimer::timeout, [&] { ++turns; });
    other.start(0);
    EXPECT_TRUE(read(Way::streamed, postPath(u"/run"_s)).bytes == body);
    EXPECT_GT(turns, body.size() / 8192 / 2);
}
