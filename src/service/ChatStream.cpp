// The request of a chat run and the opening of its reply.
#include "records/JsonEncoder.h"
#include "service/API.h"
#include "service/Endpoints.h"
#include "service/ServiceError.h"

#include <algorithm>

namespace {

/// So many of the last messages go along with a question.
constexpr qsizetype remembered = 8;

/// More than this (bytes) is never read of the body of a failed reply.
constexpr qsizetype maximumErrorBody = 32769;

struct Turn {
    QString role;
    QString content;
};

struct CitedCase {
    QString archive;
    QString id;
    std::optional<QString> accessKey;
};

struct Question {
    QString question;
    QStringList archives;
    QString locale;
    QList<Turn> messages;
    QList<CitedCase> cases;
};

} // namespace

template <>
struct JsonFields<Turn> {
    static constexpr auto table =
        std::make_tuple(jsonField("role", &Turn::role), jsonField("content", &Turn::content));
};

template <>
struct JsonFields<CitedCase> {
    static constexpr auto table =
        std::make_tuple(jsonField("archive", &CitedCase::archive), jsonField("id", &CitedCase::id),
                        jsonField("accessKey", &CitedCase::accessKey));
};

template <>
struct JsonFields<Question> {
    static constexpr auto table = std::make_tuple(
        jsonField("question", &Question::question), jsonField("archives", &Question::archives),
        jsonField("locale", &Question::locale), jsonField("messages", &Question::messages),
        jsonField("cases", &Question::cases));
};

namespace {

/// The cases of the last message that cites any, however far back it lies.
QList<CitedCase> citedCases(const QList<ChatMessage> &messages) {
    const auto citing =
        std::find_if(messages.crbegin(), messages.crend(),
                     [](const ChatMessage &message) { return !message.references.isEmpty(); });
    QList<CitedCase> cases;
    if (citing == messages.crend())
        return cases;
    for (const auto &card : citing->references)
        cases.append(CitedCase{card.archive, card.id, card.accessKey});
    return cases;
}

Task<QByteArray> errorBody(std::unique_ptr<ByteStream> stream) {
    QByteArray body;
    while (body.size() < maximumErrorBody) {
        auto reading = stream->read();
        const QByteArray piece = co_await reading;
        if (piece.isEmpty())
            break;
        body += piece;
    }
    co_return body.left(maximumErrorBody);
}

} // namespace

HttpRequest API::chatRequest(const QString &question, const QStringList &archives,
                             const QString &locale, const QList<ChatMessage> &messages) const {
    Question body{question, archives, locale, {}, citedCases(messages)};
    const auto count = std::min(remembered, messages.size());
    for (const auto &message : messages.last(count))
        body.messages.append(Turn{message.role, message.content});
    return request(Endpoint::chatRuns, "POST", {}, Json::encode(body));
}

Task<std::unique_ptr<ByteStream>> API::openStream(Transport &transport, HttpRequest request,
                                                  std::stop_token stop) {
    auto opening = transport.stream(std::move(request), std::move(stop));
    std::unique_ptr<ByteStream> stream = co_await opening;
    const int status = stream->status();
    if (status >= 200 && status <= 299)
        co_return std::move(stream);
    auto reading = errorBody(std::move(stream));
    const QByteArray body = co_await reading;
    throw failure(HttpResponse{status, body});
}
