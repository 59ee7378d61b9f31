#include "presentation/WebURL.h"

std::optional<QUrl> webURL(const QString &text) {
    const QUrl url(text, QUrl::StrictMode);
    if (!url.isValid() || url.host().isEmpty() || url.authority().contains(QLatin1Char('@')))
        return std::nullopt;
    // QUrl has lower-cased the scheme.
    if (url.scheme() != QLatin1String("http") && url.scheme() != QLatin1String("https"))
        return std::nullopt;
    return url;
}
