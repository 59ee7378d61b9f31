#include "screens/HomeModel.h"

#include "service/Endpoints.h"

HomeModel::HomeModel(QObject *parent) : QObject(parent) {}

void HomeModel::componentComplete() {
    connect(m_store, &AppStore::languageChanged, this, &HomeModel::beginLoad);
    beginLoad();
}

void HomeModel::beginLoad() {
    m_loading.begin([this](std::stop_token stop) { return load(stop); });
}

Task<void> HomeModel::load(std::stop_token stop) {
    setFailed(false);
    try {
        const std::vector<QueryItem> query{{QStringLiteral("archive"), QStringLiteral("foible")},
                                           {QStringLiteral("limit"), QStringLiteral("2")},
                                           {QStringLiteral("locale"), m_store->locale()}};
        const API api = m_store->api();
        auto fetching = api.get<SearchPage>(Endpoint::search, query, stop);
        const SearchPage page = co_await fetching;
        if (stop.stop_requested())
            co_return;
        m_latest.setItems(page.items.mid(0, 2));
        Q_EMIT latestChanged();
    } catch (...) {
        if (!stop.stop_requested())
            setFailed(true);
    }
}

void HomeModel::setFailed(bool failed) {
    if (m_failed == failed)
        return;
    m_failed = failed;
    Q_EMIT failedChanged();
}
