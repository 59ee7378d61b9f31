#pragma once

#include "platform/ByteStream.h"
#include "platform/Task.h"

#include <QByteArray>
#include <QUrl>

#include <chrono>
#include <memory>
#include <optional>
#include <stop_token>
#include <utility>
#include <vector>

struct HttpRequest {
    QByteArray method = QByteArrayLiteral("GET");
    QUrl url;
    /// Sent as they stand, besides those that the protocol needs.
    std::vector<std::pair<QByteArray, QByteArray>> headers;
    std::optional<QByteArray> body;
    /// The longest silence between two signs of life of the other side; not a limit of the whole.
    std::chrono::milliseconds timeout = std::chrono::seconds(70);
};

struct HttpResponse {
    int status = 0;
    QByteArray body;
};

/// Carries requests to an HTTP service. Keeps no cookies, no credentials and no cache.
class Transport {
public:
    virtual ~Transport() = default;

    /// The whole reply, whatever its status.
    ///
    /// A GET follows redirects inside its origin, five at most; every other redirect is the reply.
    /// A request with a body reaches the other side at most once and never travels on a connection
    /// that was used before. Throws URLError when there is no whole reply, CancellationError once
    /// `stop` was requested. Called and resumed on the main thread.
    [[nodiscard]] virtual Task<HttpResponse> data(HttpRequest request, std::stop_token stop) = 0;

    /// The reply as soon as its head has arrived, whatever its status, on a connection of its own.
    ///
    /// Follows no redirect; otherwise the rules of data(). `stop` ends the reading as well.
    [[nodiscard]] virtual Task<std::unique_ptr<ByteStream>> stream(HttpRequest request,
                                                                   std::stop_token stop) = 0;
};
