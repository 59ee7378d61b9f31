#include "signin/GoogleAuthorization.h"

#include "BuildSettings.h"
#include "platform/CancellationError.h"
#include "platform/RandomSource.h"
#include "platform/URLError.h"
#include "service/Endpoints.h"

#include <QCryptographicHash>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrlQuery>

#include <algorithm>
#include <optional>

namespace {

using Code = URLError::Code;

const QLatin1String callbackAddress("quillmere-mac://auth/google");
const QString clientName = QStringLiteral("macos");

QByteArray randomText(RandomSource &random) {
    constexpr qsizetype length = 32;
    const auto bytes = random.bytes(length);
    if (!bytes)
        throw URLError(Code::cannotCreateFile);
    return GoogleAuthorization::base64URL(*bytes);
}

struct Item {
    QByteArray name;
    /// Absent without a "=".
    std::optional<QByteArray> value;
};

QList<Item> queryItems(const QString &query) {
    QList<Item> items;
    for (const auto &part : query.toUtf8().split('&')) {
        const auto equals = part.indexOf('=');
        Item item{QByteArray::fromPercentEncoding(part.left(equals)), std::nullopt};
        if (equals >= 0)
            item.value = QByteArray::fromPercentEncoding(part.mid(equals + 1));
        items.append(item);
    }
    return items;
}

bool isKnown(const Item &item) {
    return item.name == "state" || item.name == "code" || item.name == "error";
}

qsizetype count(const QList<Item> &items, const char *name) {
    return std::count_if(items.begin(), items.end(),
                         [&](const Item &item) { return item.name == name; });
}

/// The value of the one item of this name. Two of a name count as none: they would be read one way
/// here and another way elsewhere.
std::optional<QByteArray> single(const QList<Item> &items, const char *name) {
    if (count(items, name) != 1)
        return std::nullopt;
    return std::find_if(items.begin(), items.end(),
                        [&](const Item &item) { return item.name == name; })
        ->value;
}

} // namespace

QString GoogleAuthorization::accountOrigin() {
    return QString::fromLatin1(BuildSettings::accountOrigin);
}

QByteArray GoogleAuthorization::base64URL(const QByteArray &bytes) {
    return bytes.toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
}

bool GoogleAuthorization::isCode(QStringView text) {
    constexpr qsizetype length = 64;
    return text.size() == length && std::all_of(text.begin(), text.end(), [](QChar c) {
               return (c >= u'0' && c <= u'9') || (c >= u'a' && c <= u'f');
           });
}

GoogleAuthorization::GoogleAuthorization(RandomSource &random, const QDateTime &now)
    : m_verifier(randomText(random)), m_state(randomText(random)), m_startedAt(now) {}

QByteArray GoogleAuthorization::challenge() const {
    return base64URL(QCryptographicHash::hash(m_verifier, QCryptographicHash::Sha256));
}

QUrl GoogleAuthorization::startURL(const QString &language) const {
    QUrlQuery query;
    query.addQueryItem(QStringLiteral("client"), clientName);
    query.addQueryItem(QStringLiteral("code_challenge"), QString::fromLatin1(challenge()));
    query.addQueryItem(QStringLiteral("code_challenge_method"), QStringLiteral("S256"));
    query.addQueryItem(QStringLiteral("state"), QString::fromLatin1(m_state));
    query.addQueryItem(QStringLiteral("lang"), language);
    QUrl url(accountOrigin() + QLatin1Char('/') + Endpoint::googleStart);
    url.setQuery(query);
    return url;
}

QString GoogleAuthorization::code(const QString &callback, const QDateTime &now) const {
    const std::chrono::milliseconds age(m_startedAt.msecsTo(now));
    if (age < std::chrono::milliseconds::zero() || age >= life)
        throw URLError(Code::timedOut);

    // One comparison of the text leaves no room for a user, a port or another spelling.
    const auto mark = callback.indexOf(QLatin1Char('?'));
    const auto address = mark < 0 ? callback : callback.left(mark);
    if (address != callbackAddress || callback.contains(QLatin1Char('#')) ||
        !QUrl(callback, QUrl::StrictMode).isValid())
        throw URLError(Code::badURL);

    const auto items = mark < 0 ? QList<Item>() : queryItems(callback.mid(mark + 1));
    if (!std::all_of(items.begin(), items.end(), isKnown))
        throw URLError(Code::badServerResponse);
    if (single(items, "state") != m_state)
        throw URLError(Code::badServerResponse);
    if (single(items, "error") == "access_denied")
        throw CancellationError();
    const auto code = QString::fromUtf8(single(items, "code").value_or(QByteArray()));
    if (count(items, "error") > 0 || !isCode(code))
        throw URLError(Code::badServerResponse);
    return code;
}

HttpRequest GoogleAuthorization::tokenRequest(const QString &code) const {
    const QJsonObject body{{QStringLiteral("client"), clientName},
                           {QStringLiteral("code"), code},
                           {QStringLiteral("code_verifier"), QString::fromLatin1(m_verifier)}};
    HttpRequest request;
    request.method = "POST";
    request.url = QUrl(accountOrigin() + QLatin1Char('/') + Endpoint::googleToken);
    request.headers.emplace_back("Content-Type", "application/json");
    request.body = QJsonDocument(body).toJson(QJsonDocument::Compact);
    request.timeout = std::chrono::seconds(30);
    return request;
}
