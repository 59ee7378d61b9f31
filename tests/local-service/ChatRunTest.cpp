#include "CaseData.h"
#include "ChatRoutes.h"
#include "QuestionQuota.h"
#include "RunningService.h"

#include "records/Conversation.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <thread>

namespace {

constexpr auto runs = "/v1/chat/runs";

QByteArray body(const QByteArray &question, const QByteArray &archives = "[]",
                const QByteArray &messages = "[]", const QByteArray &locale = "en") {
    return R"({"question":")" + question + R"(","archives":)" + archives + R"(,"locale":")" +
           locale + R"(","messages":)" + messages + R"(,"cases":[]})";
}

QList<ChatEvent> events(const httplib::Response &response) {
    QList<ChatEvent> events;
    const auto lines = QByteArray::fromStdString(response.body).split('\n');
    for (const QByteArray &line : lines) {
        if (!line.isEmpty())
            events.append(Json::decode<ChatEvent>(line));
    }
    return events;
}

TEST(ChatRun, StreamsTheAnswerFromTheCases) {
    RunningService running;
    const auto ada = running.join("Ada");
    const auto response = running.ask(runs, body("Who had a lantern?", R"(["foible"])"), ada.token);
    EXPECT_EQ(response.status, 200);
    EXPECT_EQ(response.get_header_value("Content-Type"), "application/x-ndjson");
    EXPECT_EQ(response.get_header_value("Transfer-Encoding"), "chunked");
    const auto lines = events(response);
    ASSERT_GE(lines.size(), 4);
    EXPECT_EQ(lines.first().type, QStringLiteral("progress"));
    EXPECT_EQ(lines.first().archive, QStringLiteral("foible"));
    EXPECT_EQ(lines.last().type, QStringLiteral("done"));
    const auto references = std::find_if(lines.begin(), lines.end(), [](const ChatEvent &event) {
        return event.type == QLatin1String("references");
    });
    ASSERT_NE(references, lines.end());
    EXPECT_EQ(references->mode, QStringLiteral("evidence-preview"));
    ASSERT_FALSE(references->items->isEmpty());
    EXPECT_EQ(references->items->first().id, QStringLiteral("quay"));
    EXPECT_EQ(references->items->first().org, QStringLiteral("Harbour Board"));
    EXPECT_EQ(running.ask<Quota>("/v1/account/quota", {}, ada.token).used, 1);
}

TEST(ChatRun, RefusesWhatNoProgramSends) {
    RunningService running;
    EXPECT_EQ(running.ask(runs, body("Why?")).status, 401);
    EXPECT_NE(running.ask(runs, body("Why?")).body.find("signin_required"), std::string::npos);

    const auto ada = running.join("Ada");
    const std::pair<QByteArray, const char *> refused[] = {
        {body(""), "question"},
        {body("  \\n "), "question"},
        {body(QByteArray(4001, 'a')), "question"},
        {body("Why?", R"(["foible","unheard"])"), "archives"},
        {body("Why?", R"("foible")"), "list"},
        {body("Why?", "[]", R"([{"role":"system","content":""}])"), "role"},
        {body("Why?", "[]", R"([{"role":"user"}])"), "content"},
        {R"({"question":"Why?"})", "archives"},
        {"{", "understand"},
        {"[]", "understand"},
    };
    for (const auto &[json, word] : refused) {
        const auto response = running.ask(runs, json, ada.token);
        EXPECT_EQ(response.status, 400) << json.left(80).constData();
        EXPECT_NE(response.body.find(word), std::string::npos) << response.body;
    }
    const QByteArray tooMuch(1024 * 1024, 'a');
    EXPECT_EQ(running.ask(runs, body(tooMuch), ada.token).status, 413);
    // A long turn of the past does not stand in the way of the next question.
    const auto past = R"([{"role":"user","content":")" + QByteArray(100'000, 'a') + R"("}])";
    EXPECT_EQ(running.ask(runs, body("lantern", "[]", past), ada.token).status, 200);
    EXPECT_EQ(running.ask<Quota>("/v1/account/quota", {}, ada.token).used, 1);
}

TEST(ChatRun, EndsWithTheDaysQuestions) {
    RunningService running;
    const auto ada = running.join("Ada");
    for (int count = 0; count < QuestionQuota::questionsPerDay; ++count)
        ASSERT_EQ(running.ask(runs, body("lantern"), ada.token).status, 200);
    const auto response = running.ask(runs, body("lantern", "[]", "[]", "de"), ada.token);
    EXPECT_EQ(response.status, 429);
    EXPECT_EQ(response.body.find(R"({"error":"quota_reached","message":"Alle 50 Fragen)"), 0u)
        << response.body;
    running.now += 24LL * 60 * 60 * 1000;
    EXPECT_EQ(running.ask(runs, body("lantern"), ada.token).status, 200);
}

/// Lets answers wait until it is opened.
class Gate final {
public:
    void wait() {
        std::unique_lock lock(m_mutex);
        ++m_waiting;
        m_changed.notify_all();
        m_changed.wait(lock, [&] { return m_open; });
    }
    void awaitWaiting(int count) {
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [&] { return m_waiting >= count; });
    }
    void open() {
        const std::lock_guard lock(m_mutex);
        m_open = true;
        m_changed.notify_all();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_changed;
    int m_waiting = 0;
    bool m_open = false;
};

TEST(ChatRun, LeavesRoomForOtherRequests) {
    Gate gate;
    RunningService running(sampleCases(), [&](std::chrono::milliseconds) { gate.wait(); });
    const auto ada = running.join("Ada");
    std::vector<std::thread> askers;
    std::atomic<int> answered = 0;
    for (int count = 0; count < ChatRoutes::greatestRuns; ++count) {
        askers.emplace_back([&] {
            const auto response = running.ask(runs, body("lantern"), ada.token);
            if (response.body.find(R"("done")") != std::string::npos)
                ++answered;
        });
    }
    gate.awaitWaiting(ChatRoutes::greatestRuns);
    const auto refused = running.ask(runs, body("lantern"), ada.token);
    EXPECT_EQ(refused.status, 503);
    EXPECT_EQ(refused.body.find(R"({"error":"busy","message":")"), 0u) << refused.body;
    EXPECT_EQ(running.get("/v1/health").status, 200);
    // One that was refused is not counted.
    EXPECT_EQ(running.ask<Quota>("/v1/account/quota", {}, ada.token).used,
              ChatRoutes::greatestRuns);

    gate.open();
    for (auto &asker : askers)
        asker.join();
    EXPECT_EQ(answered, ChatRoutes::greatestRuns);
    EXPECT_EQ(running.ask(runs, body("lantern"), ada.token).status, 200);
}

TEST(ChatRun, EndsWhenTheClientHangsUp) {
    std::atomic<int> pauses = 0;
    RunningService running(CaseData::embedded(), [&](std::chrono::milliseconds) {
        ++pauses;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    });
    const auto ada = running.join("Ada");
    running.ask(runs, body("Why did the Vasa sink?"), ada.token);
    const int whole = pauses.exchange(0);

    auto client = running.client();
    const httplib::Headers headers = {{"Authorization", "Bearer " + ada.token.toStdString()}};
    const auto json = body("Why did the Vasa sink?").toStdString();
    httplib::Request request;
    request.method = "POST";
    request.path = runs;
    request.headers = headers;
    request.headers.emplace("Content-Type", "application/json");
    request.body = json;
    request.content_receiver = [](const char *, std::size_t, std::uint64_t, std::uint64_t) {
        return false;
    };
    httplib::Response response;
    httplib::Error error = httplib::Error::Success;
    EXPECT_FALSE(client.send(request, response, error));
    client.stop();
    // Returns when the last request has ended.
    running.service.stop();
    EXPECT_GT(whole, 30);
    EXPECT_LT(pauses, whole / 2);
}

} // namespace
