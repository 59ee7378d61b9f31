#include "ChatLines.h"
#include "ChatRoutes.h"
#include "ModelPrompt.h"
#include "ScriptedModel.h"

#include "records/JsonDecoder.h"

#include <gtest/gtest.h>

namespace {

using ChatLines::events;
using ChatLines::questionsUsed;
using ChatLines::references;
using ChatLines::runs;

const auto noPause = [](std::chrono::milliseconds) {};

struct Asked {
    QString model;
    bool stream = false;
    QList<ChatRequest::Message> messages;
};

QByteArray body(const QByteArray &question, const QByteArray &messages = "[]") {
    return ChatLines::body(question, R"(["foible"])", messages);
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

/// Each byte by itself.
QList<QByteArray> bytes(const QByteArray &text) {
    QList<QByteArray> bytes;
    for (const char byte : text)
        bytes.append(QByteArray(1, byte));
    return bytes;
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
    const auto lines = events(response);
    EXPECT_EQ(types(lines).join(QLatin1Char(' ')),
              QStringLiteral("progress progress references delta delta delta done"));
    EXPECT_EQ(texts(lines),
              (QStringList{QStringLiteral("**Lantern** "), QStringLiteral("am Zürich-Quai 🏮\n\n"),
                           QStringLiteral("[1]")}));
    EXPECT_EQ(response.body.find(R"("mode")"), std::string::npos);
    const auto preview = events(without.ask(runs, question, without.join("Ada").token));
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

TEST(ModelAnswer, EndsWithTheClientEvenWhileTheModelIsSilent) {
    // More often than there are places for runs: an ended one gives back its own.
    constexpr int count = ChatRoutes::greatestRuns + 2;
    // In front of a stream that says nothing at all, and behind a text that arrives although
    // nothing follows it.
    const std::pair<QByteArray, std::string> silences[] = {{": wait\n\n", "references"},
                                                           {ScriptedModel::event("One"), "delta"}};
    for (const auto &[stream, line] : silences) {
        ScriptedModel model;
        model.setScript(model.fallingSilentAfter({stream}));
        RunningService running(sampleCases(), noPause, model.settings());
        const auto ada = running.join("Ada");
        for (int number = 1; number <= count; ++number) {
            ChatLines::hangUp(running, ada, body("Who had a lantern?"), [&](const auto &received) {
                return received.find("\"type\":\"" + line + "\"") != std::string::npos &&
                       model.awaitRequests(number);
            });
            EXPECT_TRUE(model.awaitHangUps(number)) << line;
        }
        EXPECT_EQ(questionsUsed(running, ada), count);
    }
}

TEST(ModelAnswer, TellsWhatFailedAfterWhatHasArrived) {
    using M = ScriptedModel;
    M model;
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
        {"silence", model.fallingSilentAfter({": wait\n\n"}), silent},
        {"silence later", model.fallingSilentAfter({text}), silent, one},
    };
    testing::internal::CaptureStderr();
    std::string seen;
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
        const auto reply = running.ask(runs, body("Who had a lantern?"), login.token);
        const auto lines = events(reply);
        EXPECT_EQ(lines.last().type, QStringLiteral("error")) << failure.name;
        EXPECT_TRUE(lines.last().message->startsWith(failure.sentence))
            << failure.name << reply.body;
        EXPECT_EQ(types(lines).count(QStringLiteral("references")), 1) << failure.name;
        EXPECT_EQ(texts(lines), failure.texts) << failure.name;
        // What gave no text costs nothing.
        EXPECT_EQ(questionsUsed(running, login) - used, failure.texts.size()) << failure.name;
        EXPECT_EQ(model.requests().size(), ++asked) << failure.name;
        seen += reply.body;
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
    const auto lines = events(running.ask(runs, body("Who had a lantern?"), ada.token));
    EXPECT_EQ(lines.last().type, QStringLiteral("error"));
    EXPECT_TRUE(texts(lines).isEmpty());
    EXPECT_EQ(questionsUsed(running, ada), 0);
}

TEST(ModelAnswer, NeedsNoWordAboutItsEnd) {
    const auto last = R"(data: {"choices":[{"delta":{"content":"!"},"finish_reason":"stop"}]})";
    ScriptedModel model;
    model.setScript(model.fallingSilentAfter({ScriptedModel::event("One"), last, "\n\n"}));
    auto settings = model.settings();
    settings.key.clear();
    RunningService running(sampleCases(), noPause, settings);
    const auto ada = running.join("Ada");
    const auto lines = events(running.ask(runs, body("Who had a lantern?"), ada.token));
    EXPECT_EQ(texts(lines).join(QString()), QStringLiteral("One!"));
    EXPECT_EQ(lines.last().type, QStringLiteral("done"));
    ASSERT_EQ(model.requests().size(), 1u);
    EXPECT_FALSE(model.requests()[0].has_header("Authorization"));
}

} // namespace
