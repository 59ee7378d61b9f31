#pragma once

#include "platform/Task.h"
#include "platform/Transport.h"
#include "platform/Worker.h"
#include "records/Conversation.h"
#include "records/Json.h"
#include "records/Library.h"

#include <QJsonObject>
#include <QString>
#include <QUrl>

#include <optional>
#include <stop_token>
#include <utility>
#include <vector>

class ServiceError;

struct QueryItem {
    QString key;
    QString value;
};

/// The one door to the service: its base address and, when signed in, the bearer token. A value,
/// made afresh for each piece of work. Nothing else in the program attaches a token to a request.
///
/// The operations are called on the main thread and go on there; large replies are decoded on a
/// worker. They throw ServiceError, URLError, DecodingError and CancellationError.
class API final {
public:
    /// Replies above this size (bytes) are decoded on a worker thread.
    static constexpr qsizetype decodedInPlace = 4096;

    /// `base` was accepted by validBase. The transport outlives the value and its operations.
    API(QString base, std::optional<QString> token, Transport &transport)
        : m_base(std::move(base)), m_token(std::move(token)), m_transport(&transport) {}

    const QString &base() const { return m_base; }
    const std::optional<QString> &token() const { return m_token; }

    /// Accepts a service address: https with any host, http on this machine only, no user, path,
    /// query or fragment. Gives the text as it was written, or nothing.
    static std::optional<QString> validBase(const QString &value);

    /// The address of a path below the base. Slashes in the path separate its components. An item
    /// with an empty value is written as "key=".
    QUrl url(const QString &path, const std::vector<QueryItem> &query = {}) const;

    /// A request with a time-out of 70 seconds, the token if there is one, and the JSON text as its
    /// body if there is one.
    HttpRequest request(const QString &path, const QByteArray &method,
                        const std::vector<QueryItem> &query = {},
                        const std::optional<QByteArray> &json = std::nullopt) const;

    template <class Record>
    [[nodiscard]] Task<Record> get(QString path, std::vector<QueryItem> query,
                                   std::stop_token stop) const {
        return call<Record>(*m_transport, request(path, "GET", query), std::move(stop));
    }

    template <class Record>
    [[nodiscard]] Task<Record> post(QString path, QJsonObject json, std::stop_token stop) const {
        return call<Record>(*m_transport, request(path, "POST", {}, encoded(json)),
                            std::move(stop));
    }

    /// Sends an already built request and applies the rules for replies: a status of 200 to 299 is
    /// decoded, every other one is thrown as a ServiceError that carries its status.
    template <class Record>
    [[nodiscard]] Task<Record> call(HttpRequest request, std::stop_token stop) const {
        return call<Record>(*m_transport, std::move(request), std::move(stop));
    }

    /// The largest body of a synchronisation, in bytes.
    static constexpr qsizetype largestUpload = 1'000'000;

    /// Sends queued changes, of which there may be none, and gives the account's whole library.
    /// Throws a ServiceError "library_too_large", without a request, for too large a body.
    [[nodiscard]] Task<LibraryReply> syncLibrary(QList<LibraryChange> changes,
                                                 std::stop_token stop) const {
        return syncLibrary(*this, std::move(changes), std::move(stop));
    }

    /// The request of one chat run. The question goes alone; along with it go the last 8 of the
    /// earlier messages, and the cases of the last one that cites any.
    HttpRequest chatRequest(const QString &question, const QStringList &archives,
                            const QString &locale, const QList<ChatMessage> &messages) const;

    /// Sends that request and gives the body of its reply, a line of JSON for each ChatEvent, still
    /// open and unread. One request is one run: nothing is repeated. Where the status is not one of
    /// success, a ServiceError carries it.
    [[nodiscard]] Task<std::unique_ptr<ByteStream>> stream(QString question, QStringList archives,
                                                           QString locale,
                                                           QList<ChatMessage> messages,
                                                           std::stop_token stop) const {
        return openStream(*m_transport, chatRequest(question, archives, locale, messages),
                          std::move(stop));
    }

private:
    static Task<LibraryReply> syncLibrary(API api, QList<LibraryChange> changes,
                                          std::stop_token stop);

    /// Static, and with its own copies, because it outlives the value that it was called on.
    template <class Record>
    static Task<Record> call(Transport &transport, HttpRequest request, std::stop_token stop) {
        auto body = successfulBody(transport, std::move(request), stop);
        QByteArray text = co_await body;
        if (text.size() <= decodedInPlace)
            co_return Json::decode<Record>(std::move(text));

        auto decoding = onWorker(
            [text = std::move(text)]() mutable { return Json::decode<Record>(std::move(text)); },
            stop);
        Record record = co_await decoding;
        co_return std::move(record);
    }

    static Task<QByteArray> successfulBody(Transport &transport, HttpRequest request,
                                           std::stop_token stop);
    static Task<std::unique_ptr<ByteStream>> openStream(Transport &transport, HttpRequest request,
                                                        std::stop_token stop);
    /// What a reply with a status of failure means.
    static ServiceError failure(const HttpResponse &response);
    static QByteArray encoded(const QJsonObject &json);

    QString m_base;
    std::optional<QString> m_token;
    Transport *m_transport;
};
