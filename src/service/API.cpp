#include "service/API.h"

#include "service/ServiceError.h"

#include <QJsonDocument>

namespace {

/// Scheme and host as they are written: QUrl itself folds their case.
struct WrittenAuthority {
    QStringView scheme;
    QStringView host;
};

WrittenAuthority writtenAuthority(QStringView text) {
    WrittenAuthority result;
    const auto colon = text.indexOf(QLatin1Char(':'));
    if (colon < 0)
        return result;
    result.scheme = text.left(colon);
    auto rest = text.mid(colon + 1);
    if (!rest.startsWith(QLatin1String("//")))
        return result;
    rest = rest.mid(2);
    const auto slash = rest.indexOf(QLatin1Char('/'));
    if (slash >= 0)
        rest = rest.left(slash);
    const auto bracket = rest.indexOf(QLatin1Char(']'));
    const auto port = rest.indexOf(QLatin1Char(':'), std::max<qsizetype>(bracket, 0));
    result.host = port < 0 ? rest : rest.left(port);
    return result;
}

bool isThisMachine(QStringView host) {
    return host == QLatin1String("localhost") || host == QLatin1String("127.0.0.1") ||
           host == QLatin1String("::1") || host == QLatin1String("[::1]");
}

} // namespace

std::optional<QString> API::validBase(const QString &value) {
    const QUrl url(value, QUrl::StrictMode);
    if (value.isEmpty() || !url.isValid())
        return std::nullopt;
    if (url.authority().contains(QLatin1Char('@')) || url.hasQuery() || url.hasFragment())
        return std::nullopt;
    if (!url.path().isEmpty() && url.path() != QLatin1String("/"))
        return std::nullopt;
    const auto written = writtenAuthority(value);
    if (written.host.isEmpty() || url.host().isEmpty())
        return std::nullopt;
    if (written.scheme == QLatin1String("https"))
        return value;
    if (written.scheme == QLatin1String("http") && isThisMachine(written.host))
        return value;
    return std::nullopt;
}

QUrl API::url(const QString &path, const std::vector<QueryItem> &query) const {
    QByteArray text = m_base.toUtf8();
    if (!text.endsWith('/'))
        text += '/';
    text += QUrl::toPercentEncoding(path, QByteArrayLiteral("/"));
    char separator = '?';
    for (const auto &item : query) {
        text += separator;
        text += QUrl::toPercentEncoding(item.key) + '=' + QUrl::toPercentEncoding(item.value);
        separator = '&';
    }
    return QUrl::fromEncoded(text, QUrl::StrictMode);
}

HttpRequest API::request(const QString &path, const QByteArray &method,
                         const std::vector<QueryItem> &query,
                         const std::optional<QByteArray> &json) const {
    HttpRequest request;
    request.method = method;
    request.url = url(path, query);
    if (m_token)
        request.headers.emplace_back("Authorization", "Bearer " + m_token->toUtf8());
    if (json) {
        request.headers.emplace_back("Content-Type", "application/json");
        request.body = *json;
    }
    return request;
}

QByteArray API::encoded(const QJsonObject &json) {
    return QJsonDocument(json).toJson(QJsonDocument::Compact);
}

ServiceError API::failure(const HttpResponse &response) {
    ServiceError error;
    try {
        error = Json::decode<ServiceError>(response.body);
    } catch (const DecodingError &) {
        error.error = QStringLiteral("http_%1").arg(response.status);
    }
    error.status = response.status;
    return error;
}

Task<QByteArray> API::successfulBody(Transport &transport, HttpRequest request,
                                     std::stop_token stop) {
    auto sending = transport.data(std::move(request), std::move(stop));
    HttpResponse response = co_await sending;
    if (response.status < 200 || response.status > 299)
        throw failure(response);
    co_return std::move(response.body);
}
