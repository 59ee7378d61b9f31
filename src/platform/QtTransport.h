#pragma once

#include "platform/Transport.h"

#include <memory>

class QNetworkAccessManager;

/// The transport over Qt's network access.
class QtTransport final : public Transport {
public:
    QtTransport();
    ~QtTransport() override;

    [[nodiscard]] Task<HttpResponse> data(HttpRequest request, std::stop_token stop) override;

    [[nodiscard]] Task<std::unique_ptr<ByteStream>> stream(HttpRequest request,
                                                           std::stop_token stop) override;

    /// Replies above this size (bytes) fail: no service of ours sends so much.
    static constexpr qint64 maximumBody = 256 * 1024 * 1024;

private:
    /// Made at the first request, since start-up needs no network.
    std::unique_ptr<QNetworkAccessManager> m_shared;
};
