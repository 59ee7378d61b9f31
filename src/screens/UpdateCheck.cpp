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

void UpdateCheck::setStore(AppStore *store) {
    m_store = store;
    connect(store, &AppStore::languageChanged, this, &UpdateCheck::changed);
}

QString UpdateCheck::message() const {
    switch (m_outcome) {
    case Outcome::none:
    case Outcome::checking:
        return {};
    case Outcome::unknown:
        return m_store->text(QStringLiteral("macUpdateUnknown"));
    case Outcome::upToDate:
        return m_store->text(QStringLiteral("upToDate"));
    case Outcome::available:
        return m_store->text(QStringLiteral("macUpdateAvailable"))
            .replace(QLatin1String("{v}"), m_found->version);
    }
    Q_UNREACHABLE();
}

QUrl UpdateCheck::download() const {
    return m_found ? m_found->downloadURL().value() : QUrl();
}

void UpdateCheck::begin() {
    if (isChecking())
        return;
    setOutcome(Outcome::checking);
    start(*this, [this, stop = m_stop.get_token()] { return check(stop); });
}

/// Once `stop` was requested the object is gone: nothing of it is touched then.
Task<void> UpdateCheck::check(std::stop_token stop) {
    auto outcome = Outcome::unknown;
    std::optional<MacRelease> found;
    try {
        const API site = m_store->publicSite();
        auto asking = site.get<Items<MacRelease>>(Endpoint::downloads, {}, stop);
        Items<MacRelease> reply = co_await asking;
        auto &releases = reply.items;
        releases.removeIf([](const MacRelease &release) { return !release.downloadURL(); });
        found = newest(releases);
        if (found)
            outcome = Outcome::available;
        else if (!releases.isEmpty())
            outcome = Outcome::upToDate;
    } catch (...) {
        // No list, no release: the user hears the same.
    }
    if (!stop.stop_requested())
        setOutcome(outcome, found);
}

void UpdateCheck::setOutcome(Outcome outcome, const std::optional<MacRelease> &found) {
    m_outcome = outcome;
    m_found = found;
    Q_EMIT changed();
}
