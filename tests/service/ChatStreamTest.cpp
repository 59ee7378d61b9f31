#include "service/API.h"
#include "service/ServiceError.h"
#include "tests/support/Await.h"
#include "tests/support/FakeTransport.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

CaseCard card(const QString &id, const std::optional<QString> &accessKey = std::nullopt) {
    CaseCard result;
    result.id = id;
    result.archive = u"foible"_s;
    result.key = u"foible:"_s + id;
    result.title = u"T"_s;
    result.accessKey = accessKey;
    return result;
}

ChatMessage message(const QString &content, const QList<CaseCard> &references = {}) {
    return ChatMessage::make(references.isEmpty() ? ChatMessage::user : ChatMessage::assistant,
                             content, references);
}

class ChatStream : public testing::Test {
protected:
    static QJsonObject body(const HttpRequest &request) {
        return QJsonDocument::fromJson(request.body.value()).object();
    }

    QJsonObject bodyWith(const QList<ChatMessage> &messages) const {
        return body(api.chatRequest(u"Why?"_s, {u"foible"_s}, u"en"_s, messages));
    }

    Task<std::unique_ptr<ByteStream>> begin() {
        return api.stream(u"Why?"_s, {}, u"en"_s, {}, stop.get_token());
    }

    /// Status, code and words of the failure that a reply of this status and body ends in.
    std::string failure(int status, const QList<QByteArray> &pieces) {
        auto opening = begin();
        const auto reply = transport.answerHead(u"/v1/chat/runs"_s, status);
        for (const auto &piece : pieces)
            reply->send(piece);
        reply->end();
        try {
            await(std::move(opening));
            return "opened";
        } catch (const ServiceError &error) {
            EXPECT_FALSE(reply->isOpen());
            return std::to_string(error.status.value()) + " " + error.error.toStdString() + ": " +
                   error.errorDescription().toStdString();
        }
    }

    FakeTransport transport;
    API api{u"https://a.example"_s, u"app_token"_s, transport};
    std::stop_source stop;
};

} // namespace

TEST_F(ChatStream, theRequestHoldsTheQuestionAndNothingElse) {
    const auto request =
        api.chatRequest(u"Why \"so\"?\n\u00e9"_s, {u"foible"_s, u"lumen"_s}, u"pt-BR"_s, {});
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.url.toEncoded(), "https://a.example/v1/chat/runs");
    EXPECT_EQ(request.timeout, std::chrono::seconds(70));
    const std::vector<std::pair<QByteArray, QByteArray>> headers = {
        {"Authorization", "Bearer app_token"}, {"Content-Type", "application/json"}};
    EXPECT_EQ(request.headers, headers);
    EXPECT_EQ(*request.body,
              "{\"question\":\"Why \\\"so\\\"?\\n\xc3\xa9\",\"archives\":[\"foible\",\"lumen\"],"
              "\"locale\":\"pt-BR\",\"messages\":[],\"cases\":[]}");
    const API anonymous(u"https://a.example"_s, std::nullopt, transport);
    EXPECT_EQ(anonymous.chatRequest(u"Why?"_s, {}, u"en"_s, {}).headers.size(), 1U);
}

TEST_F(ChatStream, theLastEightMessagesGoAlongAsTheyAre) {
    QList<ChatMessage> messages;
    for (int number = 0; number < 10; ++number)
        messages.append(message(number == 9 ? QString() : QString::number(number)));
    const auto sent = bodyWith(messages)[u"messages"].toArray();
    ASSERT_EQ(sent.size(), 8);
    EXPECT_EQ(sent[0].toObject(), (QJsonObject{{u"role"_s, u"user"_s}, {u"content"_s, u"2"_s}}));
    EXPECT_EQ(sent[7].toObject(), (QJsonObject{{u"role"_s, u"user"_s}, {u"content"_s, u""_s}}));
    EXPECT_EQ(bodyWith(messages.first(3))[u"messages"].toArray().size(), 3);
}

TEST_F(ChatStream, theCasesAreThoseOfTheLastMessageThatCitesAny) {
    QList<ChatMessage> messages = {message(u"a"_s, {card(u"1"_s)}),
                                   message(u"b"_s, {card(u"2"_s, u"k"_s), card(u"3"_s)})};
    for (int number = 0; number < 9; ++number)
        messages.append(message(u"later"_s));
    const auto sent = bodyWith(messages);
    EXPECT_EQ(sent[u"messages"].toArray().size(), 8);
    EXPECT_EQ(
        sent[u"cases"].toArray(),
        (QJsonArray{
            QJsonObject{{u"archive"_s, u"foible"_s}, {u"id"_s, u"2"_s}, {u"accessKey"_s, u"k"_s}},
            QJsonObject{{u"archive"_s, u"foible"_s}, {u"id"_s, u"3"_s}}}));
    messages.append(message(QString(), {card(u"4"_s)}));
    EXPECT_EQ(bodyWith(messages)[u"cases"].toArray().first()[u"id"].toString(), u"4"_s);
}

TEST_F(ChatStream, opensWithTheBodyUnread) {
    for (const int status : {200, 299}) {
        auto opening = begin();
        const auto reply = transport.answerHead(u"/v1/chat/runs"_s, status);
        auto stream = await(std::move(opening));
        reply->send("{\"type\":\"done\"}\n");
        EXPECT_EQ(await(stream->read()), "{\"type\":\"done\"}\n");
        EXPECT_TRUE(reply->isOpen());
    }
    EXPECT_EQ(body(transport.requests().front())[u"question"].toString(), u"Why?"_s);
}

TEST_F(ChatStream, aFailedReplyBecomesAServiceErrorOfABoundedBody) {
    const auto padded = [](qsizetype size) {
        const QByteArray front = R"({"error":"too_long","pad":")";
        return front + QByteArray(size - front.size() - 2, 'x') + "\"}";
    };
    struct Row {
        int status;
        QList<QByteArray> pieces;
        const char *expected;
    };
    const std::vector<Row> rows = {
        {401, {R"({"error":"signin_)", R"(required"})"}, "401 signin_required: signin required"},
        {429, {R"({"error":"quota","message":"No more."})"}, "429 quota: No more."},
        {500, {"<!doctype html>"}, "500 http_500: http 500"},
        {503, {}, "503 http_503: http 503"},
        {302, {}, "302 http_302: http 302"},
        {199, {R"({"message":"No code."})"}, "199 http_199: http 199"},
        {400, {padded(32'769)}, "400 too_long: too long"},
        {400, {padded(32'769) + " "}, "400 too_long: too long"},
        {400, {padded(32'770)}, "400 http_400: http 400"},
        {400, {padded(40'000).left(20'000), padded(40'000).mid(20'000)}, "400 http_400: http 400"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(failure(row.status, row.pieces), row.expected);
}

TEST_F(ChatStream, anEndlessErrorBodyIsNotReadOn) {
    auto opening = begin();
    const auto reply = transport.answerHead(u"/v1/chat/runs"_s, 500);
    for (int piece = 0; piece < 4; ++piece)
        reply->send(QByteArray(8193, 'x'));
    EXPECT_THROW(await(std::move(opening)), ServiceError);
    EXPECT_FALSE(reply->isOpen());
}

TEST_F(ChatStream, failuresOfTheTransportPassUnchanged) {
    auto opening = begin();
    transport.fail(u"/v1/chat/runs"_s, URLError::Code::timedOut);
    EXPECT_THROW(await(std::move(opening)), URLError);

    opening = begin();
    transport.answerHead(u"/v1/chat/runs"_s, 500)->breakOff(URLError::Code::networkConnectionLost);
    EXPECT_THROW(await(std::move(opening)), URLError) << "half an error is none";

    for (const bool answered : {false, true}) {
        stop = std::stop_source();
        opening = begin();
        if (answered)
            transport.answerHead(u"/v1/chat/runs"_s, 500);
        settleEventLoop();
        stop.request_stop();
        EXPECT_THROW(await(std::move(opening)), CancellationError);
    }
}
