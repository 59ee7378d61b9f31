#include "service/MacRelease.h"

#include "BuildSettings.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace {

using Version = std::array<qint64, 3>;

bool isDigit(QChar character) {
    return character >= u'0' && character <= u'9';
}

std::optional<Version> versionOf(const QString &text) {
    const auto parts = text.split(QLatin1Char('.'));
    Version version{};
    if (parts.size() != static_cast<qsizetype>(version.size()))
        return std::nullopt;
    for (std::size_t place = 0; place < version.size(); ++place) {
        const auto &part = parts[static_cast<qsizetype>(place)];
        bool fits = false;
        version[place] = part.toLongLong(&fits);
        if (!fits || !std::all_of(part.begin(), part.end(), isDigit))
            return std::nullopt;
    }
    return version;
}

bool isFileName(const QString &name) {
    return name.endsWith(QLatin1String(".dmg")) &&
           std::all_of(name.begin(), name.end(), [](QChar character) {
               return isDigit(character) || (character >= u'a' && character <= u'z') ||
                      (character >= u'A' && character <= u'Z') || character == u'.' ||
                      character == u'_' || character == u'-';
           });
}

} // namespace

std::optional<QUrl> MacRelease::downloadURL() const {
    if (signedRelease != true || notarized != true || platform != QLatin1String("mac") ||
        channel.value_or(QStringLiteral("release")) != QLatin1String("release"))
        return std::nullopt;
    const QUrl site = QString::fromLatin1(BuildSettings::publicSite);
    const QUrl relative(url, QUrl::StrictMode);
    if (url.isEmpty() || !relative.isValid())
        return std::nullopt;
    const QUrl address = site.resolved(relative);
    if (address.scheme() != QLatin1String("https") || address.host() != site.host() ||
        address.port() != -1 || !address.userInfo().isEmpty() || address.hasQuery() ||
        address.hasFragment())
        return std::nullopt;
    const auto path = address.path(QUrl::FullyEncoded);
    const QString folder = QStringLiteral("/downloads/");
    if (!path.startsWith(folder) || !isFileName(path.mid(folder.size())))
        return std::nullopt;
    return address;
}

bool MacRelease::isNewer(const QString &than, qint64 build) const {
    const auto own = versionOf(version);
    const auto other = versionOf(than);
    if (!own || !other)
        return false;
    return *own == *other ? build < versionCode.value_or(0) : *other < *own;
}
