#include "RequestLog.h"
#include "RunningService.h"

#include <gtest/gtest.h>

#include <chrono>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

/// A connection on which a test says exactly what it wants to.
class RawConnection final {
public:
    explicit RawConnection(int port) : m_socket(::socket(AF_INET, SOCK_STREAM, 0)) {
        sockaddr_in address{};
        address.sin_family = AF_INET;
        address.sin_port = htons(static_cast<std::uint16_t>(port));
        address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        m_connected =
            ::connect(m_socket, reinterpret_cast<sockaddr *>(&address), sizeof address) == 0;
    }
    ~RawConnection() { ::close(m_socket); }
    RawConnection(const RawConnection &) = delete;
    RawConnection &operator=(const RawConnection &) = delete;

    bool isConnected() const { return m_connected; }

    void say(const std::string &text) { ::send(m_socket, text.data(), text.size(), MSG_NOSIGNAL); }

    /// Everything until the service closes, or until `end` has come.
    std::string hear(const std::string &end = {}) {
        std::string heard;
        char buffer[4096];
        for (;;) {
            if (!end.empty() && heard.find(end) != std::string::npos)
                return heard;
            const auto count = ::recv(m_socket, buffer, sizeof buffer, 0);
            if (count <= 0)
                return heard;
            heard.append(buffer, static_cast<std::size_t>(count));
        }
    }

private:
    int m_socket;
    bool m_connected = false;
};

std::size_t replies(const std::string &heard) {
    std::size_t count = 0;
    for (auto at = heard.find("HTTP/1.1 "); at != std::string::npos;
         at = heard.find("HTTP/1.1 ", at + 1))
        ++count;
    return count;
}

int statusOf(const httplib::Result &result) {
    return result ? result->status : 0;
}

TEST(Requests, ErrorsAreJson) {
    RunningService running;
    const std::pair<std::string, int> missing[] = {
        {"/v1/cases/foible/unheard", 404},
        {"/v1/cases/unheard/quay", 404},
        {"/v1/cases/foible/", 404},
        {"/v1/cases/foible/quay/", 404},
        {"/cases/foible/unheard", 404},
        {"/", 404},
        {"/v1/health/", 404},
        {"/v1/" + std::string(2000, 'a'), 414},
        {"/" + std::string(9000, 'a'), 414},
    };
    for (const auto &[address, status] : missing) {
        const auto response = running.get(address);
        EXPECT_EQ(response.status, status) << address.substr(0, 40);
        EXPECT_EQ(response.get_header_value("Content-Type"), "application/json");
        EXPECT_EQ(response.body.find("{\"error\":\""), 0u) << response.body;
    }
    EXPECT_NE(running.get("/v1/cases/foible/unheard").body.find("case_not_found"),
              std::string::npos);

    for (const auto &result : {running.client().Post("/v1/health", "{}", "application/json"),
                               running.client().Delete("/v1/health")}) {
        EXPECT_EQ(statusOf(result), 405);
        EXPECT_EQ(result->get_header_value("Allow"), "GET, HEAD");
    }
    EXPECT_EQ(statusOf(running.client().Head("/v1/health")), 200);

    RawConnection broken(running.service.port());
    broken.say("NONSENSE\r\n\r\n");
    EXPECT_NE(broken.hear().find("{\"error\":\"bad_request\""), std::string::npos);
}

TEST(Requests, OnlyThisMachineIsAnswered) {
    RunningService running;
    const auto port = std::to_string(running.service.port());
    const std::pair<std::string, int> hosts[] = {
        {"127.0.0.1", 200},          {"localhost:" + port, 200},
        {"LocalHost:1", 200},        {"[::1]:" + port, 200},
        {"evil.example", 403},       {"localhost.evil.example", 403},
        {"127.0.0.1.evil.com", 403}, {"localhost:", 403},
        {"localhost:80x", 403},      {"", 403},
    };
    for (const auto &[host, status] : hosts)
        EXPECT_EQ(statusOf(running.client().Get("/v1/health", {{"Host", host}})), status) << host;

    RawConnection nameless(running.service.port());
    nameless.say("GET /v1/health HTTP/1.0\r\n\r\n");
    EXPECT_NE(nameless.hear().find("403"), std::string::npos);
}

TEST(Requests, OtherSitesChangeNothing) {
    QTemporaryDir home;
    Service service({home.path(), 0, sampleCases()});
    std::atomic<int> written = 0;
    service.router().add("POST", QStringLiteral("/v1/written/*"), [&](Call &call) {
        ++written;
        EXPECT_EQ(call.argument(0), QStringLiteral("here"));
        call.reply(Items<QString>{{QString::fromStdString(call.request().body)}});
    });
    service.start();
    httplib::Client client("127.0.0.1", service.port());
    const auto post = [&](const std::string &origin) {
        httplib::Headers headers;
        if (!origin.empty())
            headers.emplace("Origin", origin);
        return client.Post("/v1/written/here", headers, "some body", "text/plain");
    };

    const auto port = std::to_string(service.port());
    EXPECT_EQ(post("")->body, R"({"items":["some body"]})");
    EXPECT_EQ(statusOf(post("http://127.0.0.1:" + port)), 200);
    EXPECT_EQ(statusOf(post("http://localhost:" + port)), 200);
    EXPECT_EQ(written, 3);
    for (const char *origin : {"https://evil.example", "null", "http://localhost:1",
                               "https://127.0.0.1", "http://127.0.0.1.evil.example"})
        EXPECT_EQ(statusOf(post(origin)), 403) << origin;

    const auto read = client.Get("/v1/health", {{"Origin", "https://evil.example"}});
    EXPECT_EQ(statusOf(read), 200);
    EXPECT_FALSE(read->has_header("Access-Control-Allow-Origin"));
    EXPECT_EQ(statusOf(client.Options("/v1/written/here", {{"Origin", "https://evil.example"}})),
              403);

    // The body of a refused request must not be taken for a request of its own.
    const std::string inner = "POST /v1/written/here HTTP/1.1\r\nHost: 127.0.0.1\r\n"
                              "Content-Length: 0\r\n\r\n";
    const std::string length = "Content-Length: " + std::to_string(inner.size()) + "\r\n\r\n";
    for (const std::string &outer :
         {"POST /v1/written/here HTTP/1.1\r\nHost: evil.example\r\n" + length,
          "POST /v1/unheard HTTP/1.1\r\nHost: 127.0.0.1\r\n" + length,
          "GET /v1/health HTTP/1.1\r\nHost: 127.0.0.1\r\n" + length,
          "UNHEARD /v1/health HTTP/1.1\r\nHost: 127.0.0.1\r\n" + length}) {
        RawConnection connection(service.port());
        connection.say(outer);
        EXPECT_EQ(replies(connection.hear("}")), 1u) << outer;
        connection.say(inner);
        EXPECT_EQ(connection.hear(), "") << outer;
    }
    EXPECT_EQ(written, 3);
}

TEST(Requests, BodiesAreBounded) {
    RunningService running;
    const auto status = [&](const std::string &headers) {
        RawConnection connection(running.service.port());
        connection.say("POST /v1/health HTTP/1.1\r\nHost: localhost\r\n" + headers + "\r\n");
        return connection.hear().substr(0, 12);
    };
    EXPECT_EQ(status("Content-Length: 8388609\r\n"), "HTTP/1.1 413");
    EXPECT_EQ(status("Content-Length: 99999999999999999999\r\n"), "HTTP/1.1 413");
    EXPECT_EQ(status("Transfer-Encoding: chunked\r\n"), "HTTP/1.1 411");
    EXPECT_EQ(status(""), "HTTP/1.1 411");
    EXPECT_EQ(status("Content-Length: 1\r\nContent-Length: 2\r\n"), "HTTP/1.1 400");
}

TEST(Requests, AFailingHandlerTellsNothing) {
    QTemporaryDir home;
    Service service({home.path(), 0, sampleCases()});
    service.router().add("GET", QStringLiteral("/v1/broken"),
                         [](Call &) { throw std::runtime_error("a private detail"); });
    service.start();
    testing::internal::CaptureStderr();
    const auto result = httplib::Client("127.0.0.1", service.port()).Get("/v1/broken?q=1");
    service.stop();
    const auto log = testing::internal::GetCapturedStderr();
    EXPECT_EQ(statusOf(result), 500);
    EXPECT_EQ(result->body, R"({"error":"internal","message":"The service failed to answer."})");
    EXPECT_NE(log.find("/v1/broken failed: a private detail\n"), std::string::npos);
    EXPECT_NE(log.find("GET /v1/broken 500 62 B "), std::string::npos) << log;
}

TEST(Requests, SilentConnectionsHoldUpNobody) {
    RunningService running;
    std::vector<std::unique_ptr<RawConnection>> silent;
    for (int count = 0; count < 12; ++count) {
        silent.push_back(std::make_unique<RawConnection>(running.service.port()));
        ASSERT_TRUE(silent.back()->isConnected());
        if (count % 2 == 0)
            silent.back()->say("GET /v1/health HTTP/1.1\r\nHost: local");
    }
    const auto begin = std::chrono::steady_clock::now();
    EXPECT_EQ(running.get("/v1/health").status, 200);
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 1s);
    EXPECT_EQ(silent[1]->hear(), "");
}

TEST(Requests, ConnectionsAreKeptAndDoNotHinderTheEnd) {
    RunningService running;
    RawConnection connection(running.service.port());
    for (int count = 0; count < 3; ++count) {
        connection.say("GET /v1/health HTTP/1.1\r\nHost: localhost\r\n\r\n");
        EXPECT_EQ(replies(connection.hear("}")), 1u);
    }
    // By the time that others are answered, the service waits for a fourth request.
    for (int count = 0; count < 20; ++count)
        EXPECT_EQ(running.get("/v1/health").status, 200);
    const auto begin = std::chrono::steady_clock::now();
    running.service.stop();
    EXPECT_LT(std::chrono::steady_clock::now() - begin, 4s);
    EXPECT_FALSE(RawConnection(running.service.port()).isConnected());
}

TEST(RequestLog, ShowsEveryByteAsVisibleText) {
    EXPECT_EQ(RequestLog::escaped("/a?b=%20c"), "/a?b=%20c");
    EXPECT_EQ(RequestLog::escaped("/\n\x1b[2J \xc3\xa9\\"), "/\\x0a\\x1b[2J\\x20\\xc3\\xa9\\x5c");
}

} // namespace
