#include "screens/WallModel.h"

#include "platform/Start.h"

#include <algorithm>

namespace {

QString searchedText(const WallItem &item) {
    QStringList parts;
    for (const auto &part : {item.title, item.card ? item.card->title : std::nullopt, item.body}) {
        if (part)
            parts.append(*part);
    }
    return parts.join(QLatin1Char(' '));
}

} // namespace

WallModel::WallModel(QObject *parent) : QObject(parent), m_filter(searchedText) {}

void WallModel::componentComplete() {
    follow();
    updateSavedEarlier();
    connect(m_store, &AppStore::wallChanged, this, &WallModel::follow);
    connect(m_store, &AppStore::wallMutationsChanged, this, &WallModel::update);
    connect(m_store, &AppStore::accountChanged, this, &WallModel::update);
    connect(m_store, &AppStore::wordsChanged, this, &WallModel::follow);
    connect(m_store, &AppStore::libraryChanged, this, &WallModel::updateSavedEarlier);
    m_store->beginRefreshWall();
}

void WallModel::setQuery(const QString &query) {
    if (m_query == query)
        return;
    m_query = query;
    Q_EMIT queryChanged();
    update();
}

void WallModel::setColumns(int columns) {
    columns = std::max(1, columns);
    if (m_columns == columns)
        return;
    m_columns = columns;
    Q_EMIT columnsChanged();
    update();
}

bool WallModel::isRemovable(const WallItem &item) const {
    return !m_store->wallMutations().contains(item.id) &&
           !item.id.startsWith(QLatin1String("pending:"));
}

void WallModel::resume(const QString &id) {
    const auto *item = find(id);
    const auto chat = item ? item->chat() : std::nullopt;
    if (chat)
        m_store->resumeWallChat(*chat);
}

void WallModel::beginRemove(const QString &id) {
    if (const auto *item = find(id))
        start(*m_store, [store = m_store, item = *item] { return store->removeWallItem(item); });
}

const WallItem *WallModel::find(const QString &id) const {
    const auto &wall = m_store->wall();
    const auto found = std::find_if(wall.cbegin(), wall.cend(),
                                    [&](const WallItem &item) { return item.id == id; });
    return found == wall.cend() ? nullptr : &*found;
}

void WallModel::follow() {
    update();
    m_filter.prepare(m_store->wall(), m_store->words().locale());
}

void WallModel::update() {
    if (!m_store)
        return;
    const bool wasEmpty = isEmpty();
    QList<WallRow> rows;
    m_cases.clear();
    if (m_store->isSignedIn()) {
        const auto items = m_filter.matches(m_store->wall(), m_query, m_store->words().locale());
        for (const auto &item : items) {
            if (item.kind == QLatin1String("chat"))
                rows.append({item, isRemovable(item), 0, rows.isEmpty()});
            else
                m_cases.append(item);
        }
    }
    for (int first = 0; first < m_cases.size(); first += m_columns)
        rows.append({std::nullopt, true, first, first == 0});
    m_rows.setItems(rows);
    Q_EMIT casesChanged();
    if (wasEmpty != isEmpty())
        Q_EMIT emptyChanged();
}

void WallModel::updateSavedEarlier() {
    const bool savedEarlier = !m_store->library().saved.isEmpty();
    if (m_savedEarlier == savedEarlier)
        return;
    m_savedEarlier = savedEarlier;
    Q_EMIT savedEarlierChanged();
}
