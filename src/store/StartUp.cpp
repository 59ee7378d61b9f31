// From the first window to a connected service.
#include "platform/Start.h"
#include "service/Endpoints.h"
#include "store/AppStore.h"

namespace {

/// Two requests of which the first failure ends both.
struct Siblings {
    std::stop_source stop;
    std::exception_ptr failure;
};

/// Awaits one of them. A failure is kept, the first one only, and cancels the other.
template <class Result>
Task<std::optional<Result>> sibling(Task<Result> task, std::shared_ptr<Siblings> siblings) {
    try {
        Result result = co_await task;
        co_return result;
    } catch (...) {
        if (!siblings->failure)
            siblings->failure = std::current_exception();
        siblings->stop.request_stop();
    }
    co_return std::nullopt;
}

} // namespace

Task<AppStore::Catalogue> AppStore::fetchCatalogue(API api, QString locale) {
    const auto siblings = std::make_shared<Siblings>();
    const auto stop = siblings->stop.get_token();
    const std::vector<QueryItem> query{{QStringLiteral("locale"), locale}};

    auto healthTask = sibling(api.get<Health>(Endpoint::health, {}, stop), siblings);
    auto archivesTask = sibling(api.get<Items<Archive>>(Endpoint::archives, query, stop), siblings);
    auto health = co_await healthTask;
    auto archives = co_await archivesTask;
    if (siblings->failure)
        std::rethrow_exception(siblings->failure);
    co_return Catalogue{*health, archives->items};
}

Task<void> AppStore::connect() {
    const Marker marker(m_generation);
    setConnecting(true);
    try {
        const API anonymous(requestBase(), std::nullopt, m_platform.transport);
        auto fetching = fetchCatalogue(anonymous, locale());
        const Catalogue catalogue = co_await fetching;
        if (marker.holds() && m_health != catalogue.health) {
            m_health = catalogue.health;
            Q_EMIT healthChanged();
        }
        if (marker.holds() && m_archives.items() != catalogue.archives) {
            m_archives.setItems(catalogue.archives);
            Q_EMIT archivesChanged();
        }
    } catch (...) {
        if (marker.holds())
            setNotice(describe(std::current_exception()));
    }
    if (marker.holds())
        loadLibrary();
    if (marker.holds())
        setConnecting(false);
}

void AppStore::beginConnect() {
    start([this] { return connect(); });
}
