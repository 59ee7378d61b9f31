#include "platform/QtTransport.h"

#include "platform/CancellationError.h"
#include "platform/Completion.h"
#include "platform/URLError.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QNetworkCookie>
#include <QNetworkCookieJar>
#include <QNetworkReply>
#include <QNetworkRequest>
#include <QPointer>
#include <QTimer>

#include <functional>

namespace {

constexpr int maximumRedirects = 5;

class NoCookies final : public QNetworkCookieJar {
public:
    using QNetworkCookieJar::QNetworkCookieJar;
    QList<QNetworkCookie> cookiesForUrl(const QUrl &) const override { return {}; }
    bool setCookiesFromUrl(const QList<QNetworkCookie> &, const QUrl &) override { return false; }
};

/// A body that can be read once. The access manager repeats a request whose body it could rewind.
class OneWayBody final : public QIODevice {
public:
    explicit OneWayBody(QByteArray bytes, QObject *parent)
        : QIODevice(parent), m_bytes(std::move(bytes)) {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }

    bool isSequential() const override { return true; }
    bool reset() override { return false; }
    qint64 bytesAvailable() const override {
        return m_bytes.size() - m_position + QIODevice::bytesAvailable();
    }
    bool atEnd() const override { return m_position == m_bytes.size(); }

protected:
    qint64 readData(char *target, qint64 limit) override {
        const auto count = std::min<qint64>(limit, m_bytes.size() - m_position);
        if (count == 0)
            return -1;
        std::copy_n(m_bytes.constData() + m_position, count, target);
        m_position += count;
        return count;
    }
    qint64 writeData(const char *, qint64) override { return -1; }

private:
    QByteArray m_bytes;
    qsizetype m_position = 0;
};

std::unique_ptr<QNetworkAccessManager> makeManager() {
    auto manager = std::make_unique<QNetworkAccessManager>();
    manager->setCookieJar(new NoCookies);
    manager->setRedirectPolicy(QNetworkRequest::ManualRedirectPolicy);
    return manager;
}

QNetworkRequest networkRequest(const HttpRequest &request) {
    QNetworkRequest result(request.url);
    result.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
    result.setAttribute(QNetworkRequest::CookieLoadControlAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::CookieSaveControlAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
    result.setAttribute(QNetworkRequest::CacheSaveControlAttribute, false);
    // Left alone, the manager would tell the system's language.
    result.setRawHeader("Accept-Language", "*");
    result.setRawHeader("User-Agent", QCoreApplication::applicationName().toUtf8());
    for (const auto &[name, value] : request.headers)
        result.setRawHeader(name, value);
    return result;
}

bool sameOrigin(const QUrl &left, const QUrl &right) {
    const auto port = [](const QUrl &url) {
        return url.port(url.scheme() == QLatin1String("https") ? 443 : 80);
    };
    return left.scheme() == right.scheme() && left.host() == right.host() &&
           port(left) == port(right);
}

URLError::Code errorCode(QNetworkReply::NetworkError error) {
    using Code = URLError::Code;
    switch (error) {
    case QNetworkReply::ConnectionRefusedError:
        return Code::cannotConnectToHost;
    case QNetworkReply::RemoteHostClosedError:
        return Code::networkConnectionLost;
    case QNetworkReply::HostNotFoundError:
        return Code::cannotFindHost;
    case QNetworkReply::TimeoutError:
        return Code::timedOut;
    case QNetworkReply::SslHandshakeFailedError:
        return Code::secureConnectionFailed;
    case QNetworkReply::TemporaryNetworkFailureError:
    case QNetworkReply::NetworkSessionFailedError:
    case QNetworkReply::UnknownNetworkError:
        return Code::notConnectedToInternet;
    case QNetworkReply::ProtocolUnknownError:
        return Code::badURL;
    case QNetworkReply::ProtocolFailure:
    case QNetworkReply::UnknownContentError:
        return Code::badServerResponse;
    case QNetworkReply::ContentReSendError:
        return Code::networkConnectionLost;
    default:
        return Code::unknown;
    }
}

/// Whether an error only says what the status says, so that the reply is whole.
bool isErrorOfStatus(QNetworkReply::NetworkError error, int status) {
    switch (error) {
    case QNetworkReply::NoError:
        return true;
    case QNetworkReply::ContentReSendError:
        // The manager wants to rewind the body before it looks whether it may follow.
        return status == 307 || status == 308;
    case QNetworkReply::ProtocolFailure:
    case QNetworkReply::ProtocolUnknownError:
        return false;
    default:
        return status >= 400 && error >= QNetworkReply::ContentAccessDenied;
    }
}

/// One request on its way, with its redirects, its silence timer and its end. Deletes itself.
class Exchange final : public QObject {
public:
    Exchange(QNetworkAccessManager &shared, HttpRequest request,
             Completion<HttpResponse> completion)
        : m_shared(shared), m_request(std::move(request)), m_completion(std::move(completion)) {
        m_silence.setSingleShot(true);
        m_silence.setInterval(m_request.timeout);
        connect(&m_silence, &QTimer::timeout, this, [this] { end(URLError::Code::timedOut); });
    }

    void send() {
        auto request = networkRequest(m_request);
        if (m_request.body) {
            // A connection of its own: on a kept one that the other side has closed meanwhile, the
            // body would be lost and could not be sent again without risk of arriving twice.
            m_own = makeManager();
            request.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
            request.setHeader(QNetworkRequest::ContentLengthHeader, m_request.body->size());
            auto *body = new OneWayBody(*m_request.body, this);
            m_reply = m_own->sendCustomRequest(request, m_request.method, body);
        } else {
            m_reply = m_shared.get(request);
        }
        connect(m_reply, &QNetworkReply::finished, this, &Exchange::finished);
        connect(m_reply, &QNetworkReply::sslErrors, this, [this] { m_untrusted = true; });
        connect(m_reply, &QNetworkReply::metaDataChanged, &m_silence, qOverload<>(&QTimer::start));
        connect(m_reply, &QNetworkReply::uploadProgress, &m_silence, qOverload<>(&QTimer::start));
        connect(m_reply, &QNetworkReply::readyRead, this, &Exchange::received);
        m_silence.start();
    }

    void cancel() {
        m_cancelled = true;
        abort();
    }

private:
    void end(URLError::Code code) {
        m_failure = code;
        abort();
    }

    void abort() {
        // A reply that has failed already is about to say so.
        if (m_reply->error() == QNetworkReply::NoError)
            m_reply->abort();
    }

    void received() {
        m_silence.start();
        if (m_reply->bytesAvailable() > QtTransport::maximumBody)
            end(URLError::Code::dataLengthExceedsMaximum);
    }

    void finished() {
        m_silence.stop();
        m_reply->deleteLater();
        const auto error = m_reply->error();
        const auto status = m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
        if (m_cancelled) {
            m_completion.fail(std::make_exception_ptr(CancellationError()));
        } else if (m_failure) {
            fail(*m_failure);
        } else if (!isErrorOfStatus(error, status)) {
            fail(m_untrusted ? URLError::Code::serverCertificateUntrusted : errorCode(error));
        } else if (status == 0) {
            fail(URLError::Code::badServerResponse);
        } else if (followRedirect(status)) {
            return;
        } else {
            m_completion.succeed(HttpResponse{status, m_reply->readAll()});
        }
        deleteLater();
    }

    bool followRedirect(int status) {
        const auto target = m_reply->attribute(QNetworkRequest::RedirectionTargetAttribute).toUrl();
        if (status < 300 || status > 399 || target.isEmpty() || m_request.method != "GET" ||
            m_redirects == maximumRedirects)
            return false;
        const auto url = m_request.url.resolved(target);
        if (!sameOrigin(url, m_request.url))
            return false;
        ++m_redirects;
        m_request.url = url;
        send();
        return true;
    }

    void fail(URLError::Code code) { m_completion.fail(std::make_exception_ptr(URLError(code))); }

    QNetworkAccessManager &m_shared;
    std::unique_ptr<QNetworkAccessManager> m_own;
    HttpRequest m_request;
    Completion<HttpResponse> m_completion;
    QNetworkReply *m_reply = nullptr;
    QTimer m_silence;
    std::optional<URLError::Code> m_failure;
    int m_redirects = 0;
    bool m_cancelled = false;
    bool m_untrusted = false;
};

} // namespace

QtTransport::QtTransport() = default;
QtTransport::~QtTransport() = default;

Task<HttpResponse> QtTransport::data(HttpRequest request, std::stop_token stop) {
    if (stop.stop_requested())
        throw CancellationError();
    if (!request.url.isValid() || request.url.host().isEmpty())
        throw URLError(URLError::Code::badURL);
    if (!m_shared)
        m_shared = makeManager();

    Completion<HttpResponse> completion;
    auto *exchange = new Exchange(*m_shared, std::move(request), completion);
    exchange->setParent(m_shared.get());
    exchange->send();

    // The stop is carried out in a turn of its own: aborting resumes waiters at once otherwise.
    QPointer<Exchange> running(exchange);
    std::function<void()> onStop = [running] {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [running] {
                if (running)
                    running->cancel();
            },
            Qt::QueuedConnection);
    };
    std::stop_callback stopping(stop, onStop);
    auto waiting = completion.result();
    HttpResponse response = co_await waiting;
    if (stop.stop_requested())
        throw CancellationError();
    co_return response;
}
