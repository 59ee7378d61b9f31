#include "platform/QtTransport.h"

#include "platform/CancellationError.h"
#include "platform/Completion.h"
#include "platform/NetworkExchange.h"
#include "platform/NetworkStream.h"

#include <QNetworkAccessManager>
#include <QNetworkRequest>

namespace {

constexpr int maximumRedirects = 5;

bool sameOrigin(const QUrl &left, const QUrl &right) {
    const auto port = [](const QUrl &url) {
        return url.port(url.scheme() == QLatin1String("https") ? 443 : 80);
    };
    return left.scheme() == right.scheme() && left.host() == right.host() &&
           port(left) == port(right);
}

/// Gathers the whole reply, across redirects. Deletes itself.
class WholeExchange final : public NetworkExchange {
public:
    WholeExchange(QNetworkAccessManager &shared, HttpRequest request,
                  Completion<HttpResponse> completion)
        : NetworkExchange(std::move(request)),
          m_shared(shared),
          m_completion(std::move(completion)) {
        setParent(&shared);
        send(m_shared);
    }

private:
    void received() override {
        if (reply().bytesAvailable() > QtTransport::maximumBody)
            end(URLError::Code::dataLengthExceedsMaximum);
    }

    void finished(std::exception_ptr failure) override {
        if (failure)
            m_completion.fail(failure);
        else if (followRedirect())
            return;
        else
            m_completion.succeed(HttpResponse{status(), reply().readAll()});
        deleteLater();
    }

    bool followRedirect() {
        const auto target = reply().attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
        if (status() < 300 || status() > 399 || target.isEmpty() || request().method != "GET" ||
            m_redirects == maximumRedirects)
            return false;
        const auto url = request().url.resolved(target);
        if (!sameOrigin(url, request().url))
            return false;
        ++m_redirects;
        request().url = url;
        send(m_shared);
        return true;
    }

    QNetworkAccessManager &m_shared;
    Completion<HttpResponse> m_completion;
    int m_redirects = 0;
};

} // namespace

QtTransport::QtTransport() = default;
QtTransport::~QtTransport() = default;

Task<HttpResponse> QtTransport::data(HttpRequest request, std::stop_token stop) {
    if (stop.stop_requested())
        throw CancellationError();
    NetworkExchange::check(request);
    if (!m_shared)
        m_shared = makeNetworkManager();

    Completion<HttpResponse> completion;
    auto *exchange = new WholeExchange(*m_shared, std::move(request), completion);

    // The stop is carried out in a turn of its own: aborting resumes waiters at once otherwise.
    std::stop_callback stopping(stop, exchange->cancelLater());
    auto waiting = completion.result();
    HttpResponse response = co_await waiting;
    if (stop.stop_requested())
        throw CancellationError();
    co_return response;
}

Task<std::unique_ptr<ByteStream>> QtTransport::stream(HttpRequest request, std::stop_token stop) {
    if (stop.stop_requested())
        throw CancellationError();
    NetworkExchange::check(request);
    auto stream = std::make_unique<NetworkStream>(std::move(request), stop);
    auto opening = stream->open();
    co_await opening;
    std::unique_ptr<ByteStream> opened = std::move(stream);
    co_return std::move(opened);
}
