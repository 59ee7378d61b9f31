#pragma once

#include "platform/Completion.h"
#include "platform/Transport.h"
#include "platform/URLError.h"
#include "tests/support/FakeBody.h"

#include <QHash>

#include <variant>

/// Requests that wait until the test answers them, in any order. Answers never arrive inside the
/// call that gives them. An answer without a waiting request fails the test, and so does a request
/// that is still waiting at the end.
class FakeTransport final : public Transport {
public:
    ~FakeTransport() override;

    [[nodiscard]] Task<HttpResponse> data(HttpRequest request, std::stop_token stop) override;

    [[nodiscard]] Task<std::unique_ptr<ByteStream>> stream(HttpRequest request,
                                                           std::stop_token stop) override;

    /// Every request so far, whether answered or not.
    const std::vector<HttpRequest> &requests() const { return m_requests; }

    /// How many wait, of those to the path.
    qsizetype waiting(const QString &path) const;

    /// Answers the longest waiting request to the path.
    void answer(const QString &path, int status, const QByteArray &body);
    void fail(const QString &path, URLError::Code code);
    /// Sends the head of a streamed reply; the test sends the body.
    std::shared_ptr<FakeBody> answerHead(const QString &path, int status = 200);

    /// Cancels all that wait; false when none did.
    bool abandon();

    /// From now on every request to the path is answered by itself, in a later turn; without a
    /// response, by the test again.
    void always(const QString &path, const std::optional<HttpResponse> &response);

private:
    /// What a request waits for: its whole reply, or the head of a streamed one, which brings the
    /// body's other end.
    using Reply = std::variant<HttpResponse, std::shared_ptr<FakeBody>>;

    struct Pending {
        QString path;
        Completion<Reply> completion;
    };

    [[nodiscard]] Task<Reply> reply(HttpRequest request, std::stop_token stop);
    std::optional<Completion<Reply>> next(const QString &path) const;

    std::vector<HttpRequest> m_requests;
    std::vector<Pending> m_pending;
    QHash<QString, HttpResponse> m_always;
};
