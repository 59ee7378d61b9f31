#pragma once

#include "platform/Completion.h"
#include "platform/Transport.h"
#include "platform/URLError.h"

#include <QHash>

/// Requests that wait until the test answers them, in any order. Answers never arrive inside the
/// call that gives them. An answer without a waiting request fails the test, and so does a request
/// that is still waiting at the end.
class FakeTransport final : public Transport {
public:
    ~FakeTransport() override;

    [[nodiscard]] Task<HttpResponse> data(HttpRequest request, std::stop_token stop) override;

    /// Every request so far, whether answered or not.
    const std::vector<HttpRequest> &requests() const { return m_requests; }

    /// How many wait, of those to the path.
    qsizetype waiting(const QString &path) const;

    /// Answers the longest waiting request to the path.
    void answer(const QString &path, int status, const QByteArray &body);
    void fail(const QString &path, URLError::Code code);

    /// From now on every request to the path is answered by itself, in a later turn; without a
    /// response, by the test again.
    void always(const QString &path, const std::optional<HttpResponse> &response);

private:
    struct Pending {
        QString path;
        Completion<HttpResponse> completion;
    };

    std::optional<Completion<HttpResponse>> next(const QString &path) const;

    std::vector<HttpRequest> m_requests;
    std::vector<Pending> m_pending;
    QHash<QString, HttpResponse> m_always;
};
