#include "screens/CaseBrowserModel.h"

#include "screens/FilterLabels.h"
#include "service/Endpoints.h"

#include <algorithm>

using namespace std::chrono_literals;

namespace {

constexpr auto pauseInTyping = 250ms;

/// The choice that sets no limit comes first.
QList<FilterChoice> choices(const QString &unlimited) {
    return {{QString(), unlimited}};
}

QList<FilterChoice> sortChoices(const Words &words) {
    QList<FilterChoice> choices;
    for (const auto &order :
         {QStringLiteral("recent"), QStringLiteral("year"), QStringLiteral("significance")})
        choices.append({order, words.text(QLatin1String("sort.") + order)});
    return choices;
}

QList<FilterChoice> decadeChoices(const QList<QString> &values, const Words &words) {
    auto decades = choices(words.text(QStringLiteral("allYears")));
    for (const auto &value : values)
        decades.append({value, FilterLabels::decade(value, words)});
    return decades;
}

QList<FilterChoice> yearChoices(const QList<qint64> &values, const Words &words) {
    auto years = choices(words.text(QStringLiteral("exactYear")));
    for (const auto value : values)
        years.append({QString::number(value), QString::number(value)});
    return years;
}

} // namespace

CaseBrowserModel::CaseBrowserModel(QObject *parent) : QObject(parent) {
    for (auto *filter : {&m_category, &m_decade, &m_year, &m_sort})
        connect(filter, &CaseFilter::valueChanged, this, &CaseBrowserModel::searchAgain);
    connect(&m_year, &CaseFilter::valueChanged, this, [this] {
        if (!m_year.value().isEmpty())
            m_decade.setValue(QString());
    });
    connect(&m_decade, &CaseFilter::valueChanged, this, [this] {
        if (!m_decade.value().isEmpty())
            m_year.setValue(QString());
    });
}

void CaseBrowserModel::setStore(AppStore *store) {
    m_store = store;
    m_destination = store->destination();
    Q_EMIT storeChanged();
    Q_EMIT titleChanged();
}

void CaseBrowserModel::componentComplete() {
    const auto words = m_store->words();
    setCategories({});
    m_decade.setChoices(decadeChoices({}, words));
    m_year.setChoices(yearChoices({}, words));
    m_sort.setChoices(sortChoices(words));

    connect(m_store, &AppStore::archivesChanged, this, &CaseBrowserModel::titleChanged);
    searchAgain();
    if (isSaved()) {
        connect(m_store, &AppStore::libraryChanged, this, [this] {
            if (m_store->library().saved != m_savedSearch.cards())
                searchAgain();
        });
        return;
    }
    m_loadingFacets.begin([this](std::stop_token stop) { return loadFacets(stop); });
}

QString CaseBrowserModel::archive() const {
    return isSaved() || m_destination == QLatin1String("all") ? QString() : m_destination;
}

QString CaseBrowserModel::title() const {
    if (!m_store)
        return {};
    if (isSaved())
        return m_store->text(QStringLiteral("wallCases"));
    const auto &archives = m_store->archives();
    const auto found =
        std::find_if(archives.begin(), archives.end(),
                     [this](const Archive &archive) { return archive.id == m_destination; });
    return found == archives.end() ? m_store->text(QStringLiteral("allArchives")) : found->title;
}

void CaseBrowserModel::setText(const QString &text) {
    if (m_text == text)
        return;
    m_text = text;
    Q_EMIT textChanged();
    searchAgain();
}

void CaseBrowserModel::limitToArchive(const QString &archive, bool limited) {
    auto archives = m_archives;
    archives.set(archive, limited);
    setArchives(archives);
}

void CaseBrowserModel::searchAllArchives() {
    setArchives({});
}

void CaseBrowserModel::setArchives(const ArchiveSelection &archives) {
    if (m_archives == archives)
        return;
    m_archives = archives;
    Q_EMIT archivesChanged();
    searchAgain();
}

void CaseBrowserModel::setSelected(const QString &key) {
    publish(m_selected, key, &CaseBrowserModel::selectedChanged);
    updateSelectedCard();
}

void CaseBrowserModel::updateSelectedCard() {
    const auto row = m_results.row(m_selected);
    publish(m_selectedCard, row < 0 ? CaseCard() : m_results.cards()[row],
            &CaseBrowserModel::selectedCardChanged);
}

CaseQuery CaseBrowserModel::query() const {
    return {.text = m_text,
            .archive = archive(),
            .category = m_category.value(),
            .decade = m_decade.value(),
            .year = m_year.value(),
            .sort = m_sort.value(),
            .archives = m_archives.ids()};
}

/// For each change of what is asked for.
void CaseBrowserModel::searchAgain() {
    m_searching.begin([this](std::stop_token stop) {
        return m_text.isEmpty() ? search(stop) : searchAfterPause(stop);
    });
}

void CaseBrowserModel::beginSearch() {
    m_searching.begin([this](std::stop_token stop) { return search(stop); });
}

Task<void> CaseBrowserModel::searchAfterPause(std::stop_token stop) {
    auto pausing = m_store->sleep(pauseInTyping, stop);
    co_await pausing;
    if (stop.stop_requested())
        co_return;
    auto searching = search(stop);
    co_await searching;
}

Task<void> CaseBrowserModel::search(std::stop_token stop) {
    m_requestID = Identifier::make();
    if (isSaved()) {
        searchSaved();
        co_return;
    }
    const Marker run(m_requestID);
    const CaseQuery asked = query();
    publish(m_showing, Showing::Loading, &CaseBrowserModel::showingChanged);
    SearchPage page;
    bool failed = false;
    try {
        const API api = m_store->api();
        auto fetching =
            api.get<SearchPage>(Endpoint::search, asked.items(0, m_store->locale()), stop);
        page = co_await fetching;
    } catch (...) {
        failed = true;
    }
    if (stop.stop_requested() || !run.holds())
        co_return;
    show(asked, page);
    if (failed)
        publish(m_showing, Showing::Failed, &CaseBrowserModel::showingChanged);
}

/// The filters play no part here, and no request goes out.
void CaseBrowserModel::searchSaved() {
    const auto &saved = m_store->library().saved;
    if (saved != m_savedSearch.cards())
        m_savedSearch = SavedSearch(saved);
    SearchPage page;
    page.items = m_savedSearch.matching(m_text);
    page.total = page.items.size();
    show(query(), page);
}

void CaseBrowserModel::show(const CaseQuery &asked, const SearchPage &page) {
    if (m_answered == asked) {
        m_results.update(page.items);
    } else {
        m_answered = asked;
        m_results.replace(page.items);
        Q_EMIT replaced();
    }
    updateSelectedCard();
    publish(m_total, static_cast<double>(page.total), &CaseBrowserModel::totalChanged);
    publish(m_hasMore, page.hasMore, &CaseBrowserModel::hasMoreChanged);
    publish(m_showing, page.items.isEmpty() ? Showing::Nothing : Showing::Cards,
            &CaseBrowserModel::showingChanged);
}

void CaseBrowserModel::beginMore() {
    if (!m_loadingMore)
        m_gettingMore.begin([this](std::stop_token stop) { return more(stop); });
}

/// The page is asked for as the cards on display were, whatever has been typed since.
Task<void> CaseBrowserModel::more(std::stop_token stop) {
    if (m_showing == Showing::Loading)
        co_return;
    const Marker run(m_requestID);
    publish(m_loadingMore, true, &CaseBrowserModel::loadingMoreChanged);
    try {
        const API api = m_store->api();
        const auto items = m_answered->items(m_results.cards().size(), m_store->locale());
        auto fetching = api.get<SearchPage>(Endpoint::search, items, stop);
        const SearchPage page = co_await fetching;
        if (stop.stop_requested())
            co_return;
        if (run.holds()) {
            m_results.append(page.items);
            updateSelectedCard();
            publish(m_hasMore, page.hasMore, &CaseBrowserModel::hasMoreChanged);
        }
    } catch (...) {
        if (stop.stop_requested())
            co_return;
        m_store->setNotice(m_store->text(QStringLiteral("loadFailed")));
    }
    publish(m_loadingMore, false, &CaseBrowserModel::loadingMoreChanged);
}

void CaseBrowserModel::setCategories(const QList<QString> &values) {
    const auto words = m_store->words();
    auto categories = choices(words.text(QStringLiteral("categories")));
    for (const auto &value : values)
        categories.append({value, FilterLabels::category(value, archive(), words)});
    m_category.setChoices(categories);
}

Task<void> CaseBrowserModel::loadFacets(std::stop_token stop) {
    try {
        const std::vector<QueryItem> query{{QStringLiteral("archive"), archive()},
                                           {QStringLiteral("locale"), m_store->locale()}};
        const API api = m_store->api();
        auto fetching = api.get<Facets>(Endpoint::facets, query, stop);
        const Facets facets = co_await fetching;
        if (stop.stop_requested())
            co_return;
        setCategories(facets.categories);
        m_decade.setChoices(decadeChoices(facets.decades, m_store->words()));
        m_year.setChoices(yearChoices(facets.years, m_store->words()));
        co_return;
    } catch (...) {
        if (stop.stop_requested())
            co_return;
    }
    auto loading = loadCategories(stop);
    co_await loading;
}

/// What an older service has instead of the facets. Without it the filter is simply missing.
Task<void> CaseBrowserModel::loadCategories(std::stop_token stop) {
    try {
        const std::vector<QueryItem> query{{QStringLiteral("archive"), archive()}};
        const API api = m_store->api();
        auto fetching = api.get<Items<QString>>(Endpoint::categories, query, stop);
        const Items<QString> categories = co_await fetching;
        if (!stop.stop_requested())
            setCategories(categories.items);
    } catch (...) {
        co_return;
    }
}
