#include "tests/platform/TransportTest.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using TransportCancellation = TransportTest;

/// A port where the handshake never ends, since its queue is full and nobody accepts.
class DeafPort final {
public:
    DeafPort() {
        address.sin_family = AF_INET;
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        auto *generic = reinterpret_cast<sockaddr *>(&address);
        socklen_t size = sizeof(address);
        EXPECT_EQ(::bind(sockets[0], generic, size), 0);
        EXPECT_EQ(::listen(sockets[0], 0), 0);
        EXPECT_EQ(::getsockname(sockets[0], generic, &size), 0);
        for (std::size_t filler = 1; filler < sockets.size(); ++filler) {
            ::fcntl(sockets[filler], F_SETFL, O_NONBLOCK);
            ::connect(sockets[filler], generic, size);
        }
    }
    ~DeafPort() {
        for (const int socket : sockets)
            ::close(socket);
    }
    Q_DISABLE_COPY_MOVE(DeafPort)

    QString base() const { return u"http://127.0.0.1:%1"_s.arg(ntohs(address.sin_port)); }

private:
    static int open() { return ::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0); }

    std::array<int, 5> sockets{open(), open(), open(), open(), open()};
    sockaddr_in address{};
};

} // namespace

TEST_F(TransportCancellation, beforeTheStartNothingIsSent) {
    stop.request_stop();
    for (const auto way : {Way::whole, Way::streamed}) {
        EXPECT_EQ(read(way, postPath(u"/never"_s)).ending, "cancelled");
        EXPECT_EQ(read(way, get(u"not an address"_s)).ending, "cancelled");
    }
    EXPECT_TRUE(service.requests().empty());
}

TEST_F(TransportCancellation, inTheTurnThatSentTheRequest) {
    service.always("GET", u"/x"_s, ScriptedAnswer::reply(200));
    service.always("POST", u"/x"_s, ScriptedAnswer::reply(200));
    auto getting = send(getPath(u"/x"_s));
    auto posting = send(postPath(u"/x"_s));
    stop.request_stop();
    EXPECT_EQ(ending(std::move(getting)), "cancelled");
    EXPECT_EQ(ending(std::move(posting)), "cancelled");
}

TEST_F(TransportCancellation, whileTheConnectionIsMade) {
    const DeafPort deaf;
    auto request = get(deaf.base());
    request.timeout = 200ms;
    EXPECT_EQ(ending(request), "timedOut");

    auto posting = postPath({});
    posting.url = request.url;
    auto patient = send(posting);
    settleEventLoop();
    stop.request_stop();
    EXPECT_EQ(ending(std::move(patient)), "cancelled");
}

TEST_F(TransportCancellation, atEveryStageTheConnectionIsClosed) {
    const auto whole = ScriptedAnswer::reply(200, QByteArray(200'000, 'x'));
    for (const auto &answer :
         {ScriptedAnswer::silence(), whole.stalledInHead(), whole.stalledInBody(), whole}) {
        for (const auto &[way, request] : everyRequest(u"/long"_s)) {
            // Only of a stream is there something left to cancel when all has arrived.
            if (way == Way::whole && answer.bytes() == whole.bytes())
                continue;
            SCOPED_TRACE((request.method + " " + answer.bytes().left(80)).toStdString());
            stop = std::stop_source();
            service.expect(request.method, u"/long"_s, answer);
            const auto before = service.requests().size();
            const auto reading = begin(way, request);
            ASSERT_TRUE(eventually([&] { return service.requests().size() > before; }));
            settleEventLoop();
            if (way == Way::streamed && answer.bytes() == whole.stalledInBody().bytes()) {
                EXPECT_TRUE(eventually([&] { return reading->bytes.size() > 99'000; }));
                EXPECT_EQ(reading->status, 200);
                EXPECT_LE(reading->longestPiece, 8192);
            }
            stop.request_stop();
            EXPECT_TRUE(ended(reading));
            EXPECT_EQ(reading->ending, "cancelled");
            EXPECT_TRUE(lastConnectionCloses());
        }
    }
}

TEST_F(TransportCancellation, ofOneLeavesTheOthersAlone) {
    service.always("GET", u"/x"_s, ScriptedAnswer::reply(200, "kept").held());
    std::stop_source other;
    auto cancelled = send(getPath(u"/x"_s));
    auto kept = transport.data(getPath(u"/x"_s), other.get_token());
    ASSERT_TRUE(eventually([&] { return service.count(u"/x"_s) == 2; }));
    stop.request_stop();
    EXPECT_EQ(ending(std::move(cancelled)), "cancelled");
    service.release();
    EXPECT_EQ(await(std::move(kept)).body, "kept");
    // Too late to mean anything.
    other.request_stop();
    settleEventLoop();
}

TEST_F(TransportCancellation, winsOverAnAnswerThatArrivesInTheSameTurn) {
    service.always("GET", u"/x"_s, ScriptedAnswer::reply(200).held());
    auto task = send(getPath(u"/x"_s));
    ASSERT_TRUE(eventually([&] { return service.count(u"/x"_s) == 1; }));
    service.release();
    stop.request_stop();
    EXPECT_EQ(ending(std::move(task)), "cancelled");
}
