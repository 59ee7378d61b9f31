#include "signin/MembershipSession.h"

#include "service/Endpoints.h"
#include "signin/GoogleAuthorization.h"

std::optional<QUrl> MembershipSession::validURL(const QString &text) {
    // Compared as it is written, up to the code: so nothing can stand between.
    const QString beginning = QLatin1String("https://") +
                              QUrl(GoogleAuthorization::accountOrigin()).host() + QLatin1Char('/') +
                              Endpoint::googleWebSession + QLatin1String("?code=");
    if (!text.startsWith(beginning) ||
        !GoogleAuthorization::isCode(QStringView(text).mid(beginning.size())))
        return std::nullopt;
    return QUrl(text, QUrl::StrictMode);
}
