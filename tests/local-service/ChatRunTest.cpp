#include "CaseData.h"
#include "ChatLines.h"
#include "ChatRoutes.h"
#include "Database.h"
#include "QuestionQuota.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <thread>

namespace {

using namespace ChatLines;

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
    const auto &cited = references(lines);
    EXPECT_EQ(cited.mode, QStringLiteral("evidence-preview"));
    ASSERT_FALSE(cited.items->isEmpty());
    EXPECT_EQ(cited.items->first().id, QStringLiteral("quay"));
    EXPECT_EQ(cited.items->first().org, QStringLiteral("Harbour Board"));
    EXPECT_EQ(questionsUsed(running, ada), 1);
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
    EXPECT_EQ(questionsUsed(running, ada), 1);
}

TEST(ChatRun, EndsWithTheDaysQuestions) {
    RunningService running;
    const auto ada = running.join("Ada");
    const Quota fresh{QStringLiteral("free"), 0, QuestionQuota::questionsPerDay};
    EXPECT_EQ(running.ask<Quota>("/v1/account/quota", {}, ada.token), fresh);
    Database database(running.home());
    for (qint64 count = 1; count < QuestionQuota::questionsPerDay; ++count)
        EXPECT_TRUE(QuestionQuota::recordQuestion(database, 1, running.now));
    const auto ask = [&] {
        return running.ask(runs, body("lantern", "[]", "[]", "de"), ada.token);
    };
    EXPECT_EQ(ask().status, 200);
    EXPECT_EQ(questionsUsed(running, ada), QuestionQuota::questionsPerDay);

    // It is noon; the last millisecond of the day, and then the next day.
    running.now += 12LL * 60 * 60 * 1000 - 1;
    const auto refused = ask();
    EXPECT_EQ(refused.status, 429);
    EXPECT_EQ(refused.body.find(R"({"error":"quota_reached","message":"Alle 50 Fragen)"), 0u)
        << refused.body;
    EXPECT_EQ(questionsUsed(running, ada), QuestionQuota::questionsPerDay);
    running.now += 1;
    EXPECT_EQ(questionsUsed(running, ada), 0);
    EXPECT_EQ(ask().status, 200);
    EXPECT_EQ(questionsUsed(running, ada), 1);
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
    EXPECT_EQ(questionsUsed(running, ada), ChatRoutes::greatestRuns);

    gate.open();
    for (auto &asker : askers)
        asker.join();
    EXPECT_EQ(answered, ChatRoutes::greatestRuns);
    EXPECT_EQ(running.ask(runs, body("lantern"), ada.token).status, 200);
}

TEST(ChatRun, EndsWhenTheClientHangsUp) {
    Gate gate;
    std::atomic<bool> waits = false;
    std::atomic<int> pauses = 0;
    RunningService running(CaseData::embedded(), [&](std::chrono::milliseconds) {
        // From the third on, so that the client hears something.
        if (++pauses > 2 && waits)
            gate.wait();
    });
    const auto ada = running.join("Ada");
    running.ask(runs, body("Why did the Vasa sink?"), ada.token);
    EXPECT_GT(pauses.exchange(0), 30);

    waits = true;
    hangUp(running, ada, body("Why did the Vasa sink?"), [](const std::string &) { return true; });
    gate.open();
    // Returns when the last request has ended.
    running.service.stop();
    EXPECT_LT(pauses, 15);
}

} // namespace
