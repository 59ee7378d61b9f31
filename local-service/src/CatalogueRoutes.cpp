#include "CatalogueRoutes.h"

#include "CasePage.h"
#include "CaseStore.h"
#include "Router.h"
#include "SearchText.h"

#include "records/ArchiveStyle.h"

#include <algorithm>
#include <limits>

namespace {

constexpr qsizetype longestQuestion = 500;
constexpr qint64 firstDecade = 1940;

const QString &knownArchive(const QString &id, const char *parameter) {
    if (!ArchiveStyle::ids().contains(id))
        throw RequestError::badParameter(QLatin1String(parameter),
                                         QStringLiteral("the id of an archive"));
    return id;
}

QString readArchive(const Call &call) {
    const auto id = call.parameter("archive");
    return id.isEmpty() ? id : knownArchive(id, "archive");
}

QStringList readWords(const Call &call) {
    const auto question = call.parameter("q");
    if (question.size() > longestQuestion)
        throw RequestError::badParameter(
            QStringLiteral("q"), QStringLiteral("at most %1 characters").arg(longestQuestion));
    return SearchText::words(question);
}

/// What both parameters allow; absent when neither says anything.
std::optional<QStringList> readArchives(const Call &call) {
    const auto single = readArchive(call);
    const auto list = call.parameter("archives").split(QLatin1Char(','), Qt::SkipEmptyParts);
    QStringList several;
    for (const QString &id : list) {
        if (!several.contains(knownArchive(id, "archives")))
            several.append(id);
    }
    if (single.isEmpty())
        return several.isEmpty() ? std::nullopt : std::optional(several);
    if (several.isEmpty() || several.contains(single))
        return QStringList{single};
    return QStringList();
}

void limitToDecade(CaseSearch &search, const QString &decade) {
    if (decade.isEmpty())
        return;
    if (decade == QLatin1String("before1940")) {
        search.lastYear = firstDecade - 1;
        return;
    }
    bool isNumber = false;
    const qint64 first = decade.toInt(&isNumber);
    if (!isNumber || decade.size() != 4 || first < 1000 || first % 10 != 0)
        throw RequestError::badParameter(
            QStringLiteral("decade"), QStringLiteral("the first year of a decade or before1940"));
    search.firstYear = first;
    search.lastYear = first + 9;
}

void limitToYear(CaseSearch &search, std::optional<qint64> year) {
    if (!year)
        return;
    search.firstYear = std::max(search.firstYear, *year);
    search.lastYear = std::min(search.lastYear, *year);
}

CaseSearch::Order readOrder(const Call &call) {
    const auto sort = call.parameter("sort");
    if (sort.isEmpty() || sort == QLatin1String("recent"))
        return CaseSearch::Order::Recent;
    if (sort == QLatin1String("year"))
        return CaseSearch::Order::Year;
    if (sort == QLatin1String("significance"))
        return CaseSearch::Order::Significance;
    throw RequestError::badParameter(QStringLiteral("sort"),
                                     QStringLiteral("recent, year or significance"));
}

CaseSearch readSearch(const Call &call) {
    CaseSearch search;
    search.words = readWords(call);
    search.archives = readArchives(call);
    search.category = call.parameter("category");
    limitToDecade(search, call.parameter("decade"));
    limitToYear(search, call.wholeNumber("year", 1, 9999));
    search.order = readOrder(call);
    search.offset = call.wholeNumber("offset", 0, std::numeric_limits<qint64>::max()).value_or(0);
    search.limit =
        call.wholeNumber("limit", 1, CaseSearch::greatestLimit).value_or(CaseSearch::defaultLimit);
    return search;
}

/// The case that the route names by archive and id.
CaseEntry readCase(const Call &call, CaseStore &store, const QString &origin) {
    const auto &archive = call.argument(0);
    const auto &id = call.argument(1);
    auto entry = store.find(archive, id);
    if (!entry)
        throw RequestError::noSuchCase();
    entry->canonicalUrl = QStringLiteral("%1/cases/%2/%3").arg(origin, archive, id);
    return *entry;
}

Health health(CaseStore &store, const QString &origin) {
    Health health;
    health.ok = true;
    health.environment = QStringLiteral("local");
    health.chatMode = QStringLiteral("evidence-preview");
    health.accountUrl = origin;
    health.total = store.total();
    return health;
}

} // namespace

void CatalogueRoutes::add(Router &router, CaseStore &store, const QString &origin) {
    router.add("GET", QStringLiteral("/v1/health"),
               [&store, origin](Call &call) { call.reply(health(store, origin)); });
    router.add("GET", QStringLiteral("/v1/archives"),
               [&store](Call &call) { call.reply(Items<Archive>{store.archives()}); });
    router.add("GET", QStringLiteral("/v1/search"),
               [&store](Call &call) { call.reply(store.search(readSearch(call))); });
    router.add("GET", QStringLiteral("/v1/facets"),
               [&store](Call &call) { call.reply(store.facets(readArchive(call))); });
    router.add("GET", QStringLiteral("/v1/categories"), [&store](Call &call) {
        call.reply(Items<QString>{store.categories(readArchive(call))});
    });
    router.add("GET", QStringLiteral("/v1/cases/*/*"),
               [&store, origin](Call &call) { call.reply(readCase(call, store, origin)); });
    router.add("GET", QStringLiteral("/cases/*/*"), [&store, origin](Call &call) {
        call.replyPage(CasePage::html(readCase(call, store, origin)), CasePage::style());
    });
}
