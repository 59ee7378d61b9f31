#include "ChatRoutes.h"
#include "ModelPrompt.h"
#include "QuestionQuota.h"
#include "RunningService.h"
#include "ScriptedModel.h"

#include "records/Conversation.h"
#include "records/JsonDecoder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <thread>

namespace {

constexpr auto runs = "/v1/chat/runs";
const auto noPause = [](std::chrono::milliseconds) {};

struct Asked {
    QString model;
    bool stream = false;
    QList<ChatRequest::Message> messages;
};

QByteArray body(const QByteArray &question, const QByteArray &messages = "[]") {
    return R"({"question":")" + question + R"(","archives":["foible"],"locale":"en","messages":)" +
           messages + R"(,"cases":[]})";
}

QList<ChatEvent> events(const std::string &body) {
    QList<ChatEvent> events;
    const auto lines = QByteArray::fromStdString(body).split('\n');
    for (const QByteArray &line : lines) {
        if (!line.isEmpty())
            events.append(Json::decode<ChatEvent>(line));
    }
    return events;
}

QStringList types(const QList<ChatEvent> &events) {
    QStringList types;
    for (const ChatEvent &event : events)
        types.append(event.type);
    return types;
}

QStringList texts(const QList<ChatEvent> &events) {
    QStringList texts;
    for (const ChatEvent &event : events) {
        if (event.text)
            texts.append(*event.text);
    }
    return texts;
}

const ChatEvent &references(const QList<ChatEvent> &events) {
    return *std::find_if(events.begin(), events.end(), [](const ChatEvent &event) {
        return event.type == QLatin1String("references");
    });
}

/// Each byte by itself.
QList<QByteArray> bytes(const QByteArray &text) {
    QList<QByteArray> bytes;
    for (const char byte : text)
        bytes.append(QByteArray(1, byte));
    return bytes;
}

qint64 questionsUsed(RunningService &running, const Login &login) {
    return running.ask<Quota>("/v1/account/quota", {}, login.token).used;
}

} // namespace

template <>
struct JsonFields<Asked> {
    static constexpr auto table =
        std::make_tuple(jsonField("model", &Asked::model), jsonField("stream", &Asked::stream),
                        jsonField("messages", &Asked::messages));
};

namespace {

TEST(ModelAnswer, IsWrittenFromTheCasesThatTheServiceFinds) {
    // All three line ends, an event on two lines, and events without text.
    const QByteArray stream =
        ": hello\r\n\r\n"
        R"(data: {"choices":[{"delta":{"role":"assistant","content":null}}]})"
        "\r\n\r\n" +
        ScriptedModel::event("**Lantern** ") +
        "event: message\rdata:{\"choices\":[{\"delta\":\rdata: {\"content\":\"am Zürich-Quai 🏮"
        "\\n\\n\"}}]}\r\r" +
        ScriptedModel::event("[1]") + "data: {\"choices\":[],\"usage\":{}}\n\n" +
        R"(data: {"choices":[{"delta":{},"finish_reason":"stop"}]})" + "\n\ndata: [DONE]\n\n";
    ScriptedModel model(ScriptedModel::sending(bytes(stream)));
    RunningService running(sampleCases(), noPause, model.settings());
    RunningService without;
    const auto question = body("Who had a lantern?",
                               R"([{"role":"user","content":"Before"},
                                   {"role":"assistant","content":""},
                                   {"role":"assistant","content":")" +
                                   QByteArray(5000, 'a') + R"("}])");
    const auto ada = running.join("Ada");
    const auto response = running.ask(runs, question, ada.token);
    const auto lines = events(response.body);
    EXPECT_EQ(types(lines).join(QLatin1Char(' ')),
              QStringLiteral("progress progress references delta delta delta done"));
    EXPECT_EQ(texts(lines),
              (QStringList{QStringLiteral("**Lantern** "), QStringLiteral("am Zürich-Quai 🏮\n\n"),
                           QStringLiteral("[1]")}));
    EXPECT_EQ(response.body.find(R"("mode")"), std::string::npos);
    const auto preview = events(without.ask(runs, question, without.join("Ada").token).body);
    EXPECT_EQ(references(lines).items, references(preview).items);
    EXPECT_EQ(questionsUsed(running, ada), 1);

    const auto requests = model.requests();
    ASSERT_EQ(requests.size(), 1u);
    EXPECT_EQ(requests[0].get_header_value("Authorization"),
              std::string("Bearer ") + ScriptedModel::key);
    EXPECT_EQ(requests[0].get_header_value("Content-Type"), "application/json");
    EXPECT_EQ(requests[0].get_param_value("version"), "a b");
    const auto asked = Json::decode<Asked>(QByteArray::fromStdString(requests[0].body));
    EXPECT_EQ(asked.model, model.settings().name);
    EXPECT_TRUE(asked.stream);
    ASSERT_EQ(asked.messages.size(), 4);
    EXPECT_EQ(asked.messages[0].role, QStringLiteral("system"));
    qsizetype number = 0;
    for (const CaseCard &card : *references(lines).items) {
        const auto heading = QStringLiteral("\n[%1] %2 (").arg(++number).arg(card.title);
        EXPECT_TRUE(asked.messages[0].content.contains(heading)) << heading.toStdString();
    }
    EXPECT_EQ(asked.messages[1].content, QStringLiteral("Before"));
    EXPECT_EQ(asked.messages[2].role, QStringLiteral("assistant"));
    EXPECT_EQ(asked.messages[2].content.size(), ModelPrompt::longestTurn);
    EXPECT_EQ(asked.messages[3].role, QStringLiteral("user"));
    EXPECT_EQ(asked.messages[3].content, QStringLiteral("Who had a lantern?"));
}

TEST(ModelAnswer, AsksNothingWhereNoCaseIsFound) {
    ScriptedModel model(ScriptedModel::sending({ScriptedModel::event("Invented")}));
    RunningService running(sampleCases(), noPause, model.settings());
    RunningService without;
    const auto question = body("How do I center a div in CSS?");
    EXPECT_EQ(running.ask(runs, question, running.join("Ada").token).body,
              without.ask(runs, question, without.join("Ada").token).body);
    EXPECT_TRUE(model.requests().empty());
}

template <class Condition>
bool eventually(Condition condition) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
    while (!condition()) {
        if (std::chrono::steady_clock::now() > end)
            return false;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}

/// Asks, and hangs up at the first line of this type, once the model has been asked.
void hangUpAt(const std::string &type, RunningService &running, const Login &login,
              const ScriptedModel &model) {
    const auto before = model.requests().size();
    auto client = running.client();
    std::string received;
    httplib::Request request;
    request.method = "POST";
    request.path = runs;
    request.headers = {{"Authorization", "Bearer " + login.token.toStdString()},
                       {"Content-Type", "application/json"}};
    request.body = body("Who had a lantern?").toStdString();
    request.content_receiver = [&](const char *bytes, std::size_t size, std::uint64_t,
                                   std::uint64_t) {
        received.append(bytes, size);
        if (received.find("\"type\":\"" + type + "\"") == std::string::npos)
            return true;
        EXPECT_TRUE(eventually([&] { return model.requests().size() > before; }));
        return false;
    };
    httplib::Response response;
    auto error = httplib::Error::Success;
    client.send(request, response, error);
    EXPECT_EQ(error, httplib::Error::Canceled) << received;
}

TEST(ModelAnswer, EndsWithTheClientEvenWhileTheModelIsSilent) {
    // More often than there are places for runs: an ended one gives back its own.
    constexpr int count = ChatRoutes::greatestRuns + 2;
    // In front of a stream that says nothing at all, and behind a text that arrives although
    // nothing follows it.
    const std::pair<QByteArray, std::string> silences[] = {{": wait\n\n", "references"},
                                                           {ScriptedModel::event("One"), "delta"}};
    for (const auto &[stream, line] : silences) {
        std::atomic<int> closed = 0;
        ScriptedModel model(ScriptedModel::fallingSilentAfter({stream}, [&] { ++closed; }));
        RunningService running(sampleCases(), noPause, model.settings());
        const auto ada = running.join("Ada");
        for (int number = 1; number <= count; ++number) {
            hangUpAt(line, running, ada, model);
            EXPECT_TRUE(eventually([&] { return closed == number; })) << line;
        }
        EXPECT_EQ(questionsUsed(running, ada), count);
    }
}

TEST(ModelAnswer, TellsWhatFailedAfterWhatHasArrived) {
    using M = ScriptedModel;
    const auto text = M::event("One");
    const QByteArray error = "data: {\"error\":{\"message\":\"overloaded\"}}\n\n";
    const QByteArray noStream = R"({"choices":[{"message":{"content":"One"}}]})";
    M elsewhere(M::sending({text, "data: [DONE]\n\n"}));
    const auto target = elsewhere.settings().url.toString().toStdString();
    const auto plain = [](int status, const QByteArray &reply) {
        return [status, reply](httplib::Response &response) {
            response.status = status;
            response.set_content(reply.toStdString(), "application/json");
        };
    };
    const auto redirect = [&](httplib::Response &response) { response.set_redirect(target, 307); };
    struct Failure {
        const char *name;
        M::Script script;
        QString sentence;
        QStringList texts = {};
    };
    const auto unavailable = QStringLiteral("The model that writes the answers cannot be reached");
    const auto brokeOff = QStringLiteral("The model broke off");
    const auto silent = QStringLiteral("The model has sent nothing");
    const QStringList one = {QStringLiteral("One")};
    const std::vector<Failure> failures = {
        {"refused by status", plain(401, R"({"error":"k3y"})"), unavailable},
        {"sent elsewhere", redirect, unavailable},
        {"no events", plain(200, noStream), unavailable},
        {"an empty answer", M::sending({"data: [DONE]\n\n"}), unavailable},
        {"an error at once", M::sending({error, text}), unavailable},
        {"a broken start", M::breakingOffAfter({text.left(40)}), unavailable},
        {"a broken connection", M::breakingOffAfter({text, text.left(40)}), brokeOff, one},
        {"an early end", M::sending({text, "data: [DONE]"}), brokeOff, one},
        {"an error later", M::sending({text, error}), brokeOff, one},
        {"no end", M::sending({text, QByteArray(5 * 1024 * 1024, 'a')}), brokeOff, one},
        {"silence", M::fallingSilentAfter({": wait\n\n"}), silent},
        {"silence later", M::fallingSilentAfter({text}), silent, one},
    };
    testing::internal::CaptureStderr();
    std::string seen;
    M model;
    auto impatient = model.settings();
    impatient.longestSilence = std::chrono::seconds(2);
    RunningService patientOne(sampleCases(), noPause, model.settings());
    RunningService impatientOne(sampleCases(), noPause, impatient);
    const auto ada = patientOne.join("Ada");
    const auto bob = impatientOne.join("Bob");
    std::size_t asked = 0;
    for (const auto &failure : failures) {
        const bool waits = failure.sentence == silent;
        auto &running = waits ? impatientOne : patientOne;
        const auto &login = waits ? bob : ada;
        const auto used = questionsUsed(running, login);
        model.setScript(failure.script);
        const auto reply = running.ask(runs, body("Who had a lantern?"), login.token).body;
        const auto lines = events(reply);
        EXPECT_EQ(lines.last().type, QStringLiteral("error")) << failure.name;
        EXPECT_TRUE(lines.last().message->startsWith(failure.sentence)) << failure.name << reply;
        EXPECT_EQ(types(lines).count(QStringLiteral("references")), 1) << failure.name;
        EXPECT_EQ(texts(lines), failure.texts) << failure.name;
        // What gave no text costs nothing.
        EXPECT_EQ(questionsUsed(running, login) - used, failure.texts.size()) << failure.name;
        EXPECT_EQ(model.requests().size(), ++asked) << failure.name;
        seen += reply;
    }
    EXPECT_TRUE(elsewhere.requests().empty());
    seen += testing::internal::GetCapturedStderr();
    EXPECT_NE(seen.find("status 401"), std::string::npos) << seen;
    EXPECT_EQ(seen.find("k3y"), std::string::npos) << seen;
}

TEST(ModelAnswer, FailsWhereNothingListens) {
    // A port that was free a moment ago.
    const auto settings = ScriptedModel().settings();
    RunningService running(sampleCases(), noPause, settings);
    const auto ada = running.join("Ada");
    const auto lines = events(running.ask(runs, body("Who had a lantern?"), ada.token).body);
    EXPECT_EQ(lines.last().type, QStringLiteral("error"));
    EXPECT_TRUE(texts(lines).isEmpty());
    EXPECT_EQ(questionsUsed(running, ada), 0);
}

TEST(ModelAnswer, NeedsNoWordAboutItsEnd) {
    const auto last = R"(data: {"choices":[{"delta":{"content":"!"},"finish_reason":"stop"}]})";
    ScriptedModel model(
        ScriptedModel::fallingSilentAfter({ScriptedModel::event("One"), last, "\n\n"}));
    auto settings = model.settings();
    settings.key.clear();
    RunningService running(sampleCases(), noPause, settings);
    const auto ada = running.join("Ada");
    const auto lines = events(running.ask(runs, body("Who had a lantern?"), ada.token).body);
    EXPECT_EQ(texts(lines).join(QString()), QStringLiteral("One!"));
    EXPECT_EQ(lines.last().type, QStringLiteral("done"));
    ASSERT_EQ(model.requests().size(), 1u);
    EXPECT_FALSE(model.requests()[0].has_header("Authorization"));
}

} // namespace
