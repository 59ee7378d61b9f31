#include "screens/UpdateCheck.h"

#include "BuildSettings.h"
#include "platform/Start.h"
#include "service/Endpoints.h"
#include "service/MacRelease.h"

namespace {

/// The newest of the releases after the running one, the earlier of equal ones.
std::optional<MacRelease> newest(const QList<MacRelease> &releases) {
    std::optional<MacRelease> best;
    for (const auto &release : releases) {
        const QString version = best ? best->version : QLatin1String(BuildSettings::version);
        const qint64 build = best ? best->versionCode.value_or(0) : BuildSettings::buildNumber;
        if (release.isNewer(version, build))
            best = release;
    }
    return best;
}

} // namespace

UpdateCheck::~UpdateCheck() {
    m_stop.request_stop();
}

void UpdateCheck::begin() {
    if (m_checking)
        return;
    setOutcome(true, {}, {});
    start(*this, [this, stop = m_stop.get_token()] { return check(stop); });
}

/// Once `stop` was requested the object is gone: nothing of it is touched then.
Task<void> UpdateCheck::check(std::stop_token stop) {
    const Words words = m_store->words();
    QString message = words.text(QStringLiteral("macUpdateUnknown"));
    QUrl download;
    try {
        const API site = m_store->publicSite();
        auto asking = site.get<Items<MacRelease>>(Endpoint::downloads, {}, stop);
        Items<MacRelease> reply = co_await asking;
        auto &releases = reply.items;
        releases.removeIf([](const MacRelease &release) { return !release.downloadURL(); });
        if (const auto best = newest(releases)) {
            download = best->downloadURL().value();
            message = words.text(QStringLiteral("macUpdateAvailable"))
                          .replace(QLatin1String("{v}"), best->version);
        } else if (!releases.isEmpty()) {
            message = words.text(QStringLiteral("upToDate"));
        }
    } catch (...) {
        // No list, no release: the user hears the same.
    }
    if (!stop.stop_requested())
        setOutcome(false, message, download);
}

void UpdateCheck::setOutcome(bool checking, const QString &message, const QUrl &download) {
    m_checking = checking;
    m_message = message;
    m_download = download;
    Q_EMIT changed();
}
