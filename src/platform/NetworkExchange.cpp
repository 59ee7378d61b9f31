#include "platform/NetworkExchange.h"

#include "platform/CancellationError.h"

#include <QCoreApplication>
#include <QNetworkAccessManager>
#include <QNetworkCookie>
#include <QNetworkCookieJar>
#include <QNetworkRequest>

namespace {

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

/// Whether the reply is whole although there is an error.
bool isWhole(const QNetworkReply &reply, int status) {
    switch (reply.error()) {
    case QNetworkReply::NoError:
        return true;
    case QNetworkReply::ContentReSendError:
        // The manager wants to rewind the body before it looks whether it may follow, and also when
        // the connection closes, even where that is how the reply ends.
        return status == 307 || status == 308 ||
               (status != 0 && !reply.hasRawHeader("Content-Length") &&
                !reply.hasRawHeader("Transfer-Encoding"));
    case QNetworkReply::ProtocolFailure:
    case QNetworkReply::ProtocolUnknownError:
        return false;
    default:
        // It only says what the status says.
        return status >= 400 && reply.error() >= QNetworkReply::ContentAccessDenied;
    }
}

} // namespace

std::unique_ptr<QNetworkAccessManager> makeNetworkManager() {
    auto manager = std::make_unique<QNetworkAccessManager>();
    manager->setCookieJar(new NoCookies);
    manager->setRedirectPolicy(QNetworkRequest::ManualRedirectPolicy);
    return manager;
}

NetworkExchange::NetworkExchange(HttpRequest request) : m_request(std::move(request)) {
    m_silence.setSingleShot(true);
    m_silence.setInterval(m_request.timeout);
    connect(&m_silence, &QTimer::timeout, this, [this] { end(URLError::Code::timedOut); });
}

NetworkExchange::~NetworkExchange() = default;

void NetworkExchange::check(const HttpRequest &request) {
    if (!request.url.isValid() || request.url.host().isEmpty())
        throw URLError(URLError::Code::badURL);
}

void NetworkExchange::send(QNetworkAccessManager &shared) {
    // A body takes a connection of its own: on a kept one that the other side has closed meanwhile,
    // it would be lost and could not be sent again without risk of arriving twice.
    if (m_request.body)
        sendAlone();
    else
        watch(shared.get(networkRequest(m_request)));
}

void NetworkExchange::sendAlone() {
    m_own = makeNetworkManager();
    auto request = networkRequest(m_request);
    if (!m_request.body) {
        watch(m_own->sendCustomRequest(request, m_request.method));
        return;
    }
    request.setAttribute(QNetworkRequest::DoNotBufferUploadDataAttribute, true);
    request.setHeader(QNetworkRequest::ContentLengthHeader, m_request.body->size());
    auto *body = new OneWayBody(*m_request.body, this);
    watch(m_own->sendCustomRequest(request, m_request.method, body));
}

void NetworkExchange::watch(QNetworkReply *reply) {
    m_reply = reply;
    connect(reply, &QNetworkReply::finished, this, &NetworkExchange::replyFinished);
    connect(reply, &QNetworkReply::sslErrors, this, [this] { m_untrusted = true; });
    connect(reply, &QNetworkReply::uploadProgress, &m_silence, qOverload<>(&QTimer::start));
    const auto progress = [this] {
        m_silence.start();
        received();
    };
    connect(reply, &QNetworkReply::metaDataChanged, this, progress);
    connect(reply, &QNetworkReply::readyRead, this, progress);
    m_silence.start();
}

int NetworkExchange::status() const {
    return m_reply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
}

void NetworkExchange::cancel() {
    m_cancelled = true;
    abort();
}

std::function<void()> NetworkExchange::cancelLater() {
    return [exchange = QPointer(this)] {
        if (exchange) {
            QMetaObject::invokeMethod(
                exchange.data(), [exchange] { exchange->cancel(); }, Qt::QueuedConnection);
        }
    };
}

void NetworkExchange::end(URLError::Code code) {
    m_failure = code;
    abort();
}

void NetworkExchange::abort() {
    // A reply that has failed already is about to say so.
    if (m_reply && m_reply->isRunning() && m_reply->error() == QNetworkReply::NoError)
        m_reply->abort();
}

void NetworkExchange::replyFinished() {
    m_silence.stop();
    m_reply->deleteLater();
    finished(failure());
}

std::exception_ptr NetworkExchange::failure() const {
    if (m_cancelled)
        return std::make_exception_ptr(CancellationError());
    if (m_failure)
        return std::make_exception_ptr(URLError(*m_failure));
    if (!isWhole(*m_reply, status()))
        return std::make_exception_ptr(URLError(m_untrusted
                                                    ? URLError::Code::serverCertificateUntrusted
                                                    : errorCode(m_reply->error())));
    if (status() == 0)
        return std::make_exception_ptr(URLError(URLError::Code::badServerResponse));
    return nullptr;
}
