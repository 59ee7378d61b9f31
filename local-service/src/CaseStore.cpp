#include "CaseStore.h"

#include "Database.h"

#include "records/ArchiveStyle.h"
#include "records/Json.h"

namespace {

constexpr auto cardColumns = "SELECT cases.archive, cases.id, cases.title, cases.summary,"
                             " cases.category, cases.era, cases.org";
constexpr auto ofArchive = " FROM cases WHERE ?1 = '' OR archive = ?1";
constexpr qint64 firstDecade = 1940;

CaseCard card(const Statement &row) {
    CaseCard card;
    card.archive = row.text(0);
    card.id = row.text(1);
    card.key = card.archive + QLatin1Char(':') + card.id;
    card.title = row.text(2);
    card.summary = row.text(3);
    card.category = row.text(4);
    card.era = row.text(5);
    card.locale = QStringLiteral("en");
    card.org = row.text(6);
    return card;
}

QList<QString> readCategories(Database::Access &access, const QString &archive) {
    auto query =
        access.prepare(QByteArray("SELECT DISTINCT category") + ofArchive + " ORDER BY category");
    query.bind(archive);
    QList<QString> categories;
    while (query.next())
        categories.append(query.text(0));
    return categories;
}

QList<qint64> readYears(Database::Access &access, const QString &archive) {
    auto query =
        access.prepare(QByteArray("SELECT DISTINCT year") + ofArchive + " ORDER BY year DESC");
    query.bind(archive);
    QList<qint64> years;
    while (query.next())
        years.append(query.integer(0));
    return years;
}

/// From years in falling order.
QList<QString> decades(const QList<qint64> &years) {
    QList<QString> decades;
    for (const qint64 year : years) {
        const auto decade =
            year < firstDecade ? QStringLiteral("before1940") : QString::number(year - year % 10);
        if (decades.isEmpty() || decades.last() != decade)
            decades.append(decade);
    }
    return decades;
}

QList<CaseCard> readRelated(Database::Access &access, qint64 number) {
    auto query = access.prepare(QByteArray(cardColumns) +
                                " FROM related_cases JOIN cases"
                                " ON cases.archive = related_cases.archive"
                                " AND cases.id = related_cases.id"
                                " WHERE related_cases.number = ? ORDER BY related_cases.position");
    query.bind(number);
    QList<CaseCard> related;
    while (query.next())
        related.append(card(query));
    return related;
}

} // namespace

CaseStore::CaseStore(Database &database) : m_database(database) {}

qint64 CaseStore::total() {
    Database::Access access(m_database);
    auto query = access.prepare("SELECT count(*) FROM cases");
    query.next();
    return query.integer(0);
}

QList<Archive> CaseStore::archives() {
    Database::Access access(m_database);
    auto query = access.prepare("SELECT id, title, description, accent,"
                                " (SELECT count(*) FROM cases WHERE archive = archives.id)"
                                " FROM archives ORDER BY position");
    QList<Archive> archives;
    while (query.next()) {
        Archive archive;
        archive.id = query.text(0);
        archive.domain = ArchiveStyle::domain(archive.id);
        archive.title = query.text(1);
        archive.description = query.text(2);
        archive.accent = query.text(3);
        archive.count = query.integer(4);
        archives.append(archive);
    }
    return archives;
}

SearchPage CaseStore::search(const CaseSearch &search) {
    Database::Access access(m_database);
    SearchPage page;
    page.offset = search.offset;
    page.limit = search.limit;

    auto count = access.prepare("SELECT count(*)" + search.source());
    search.bindSource(count);
    count.next();
    page.total = count.integer(0);

    auto query =
        access.prepare(cardColumns + search.source() + search.ordering() + " LIMIT ? OFFSET ?");
    search.bindSource(query);
    query.bind(search.limit).bind(search.offset);
    while (query.next())
        page.items.append(card(query));
    page.hasMore = page.total - page.items.size() > page.offset;
    return page;
}

Facets CaseStore::facets(const QString &archive) {
    Database::Access access(m_database);
    Facets facets;
    facets.categories = readCategories(access, archive);
    facets.years = readYears(access, archive);
    facets.decades = decades(facets.years);
    return facets;
}

QList<QString> CaseStore::categories(const QString &archive) {
    Database::Access access(m_database);
    return readCategories(access, archive);
}

std::optional<CaseEntry> CaseStore::find(const QString &archive, const QString &id) {
    Database::Access access(m_database);
    auto query = access.prepare("SELECT number, entry FROM cases WHERE archive = ? AND id = ?");
    query.bind(archive).bind(id);
    if (!query.next())
        return std::nullopt;
    auto entry = Json::decode<CaseEntry>(query.utf8(1));
    if (auto related = readRelated(access, query.integer(0)); !related.isEmpty())
        entry.related = std::move(related);
    return entry;
}
