#include "tests/screens/SearchPages.h"

#include "records/Json.h"

CaseCard sampleCard(const QString &id) {
    CaseCard card;
    card.id = id;
    card.key = QStringLiteral("foible:") + id;
    card.archive = QStringLiteral("foible");
    card.title = QStringLiteral("Title ") + id;
    card.summary = QStringLiteral("Summary ") + id;
    card.category = QStringLiteral("engineering");
    card.era = QStringLiteral("1907");
    card.locale = QStringLiteral("en");
    return card;
}

QByteArray searchPage(const QStringList &ids, int total, bool hasMore) {
    SearchPage page;
    for (const auto &id : ids)
        page.items.append(sampleCard(id));
    page.total = total;
    page.hasMore = hasMore;
    return Json::encode(page);
}
