#include "bench/Measure.h"
#include "bench/SampleRecords.h"
#include "screens/CaseResults.h"
#include "screens/SavedSearch.h"

#include <QSet>

namespace {

constexpr qsizetype pageSize = 30;

/// Pages of so many cards in all. As with a list that grows while it is read, each page begins with
/// the last case of the one before.
QList<QList<CaseCard>> pages(qsizetype count) {
    const auto cards = SampleRecords::shortCards().items;
    QList<QList<CaseCard>> pages;
    for (qsizetype first = 0; first < count; first += pageSize) {
        QList<CaseCard> page;
        if (!pages.isEmpty())
            page.append(pages.last().last());
        for (qsizetype index = first; index < first + pageSize; ++index) {
            page.append(cards[index % cards.size()]);
            page.last().key = QString::number(index);
        }
        pages.append(page);
    }
    return pages;
}

void appendPages(const QList<QList<CaseCard>> &pages) {
    CaseResults results;
    for (const auto &page : pages)
        results.append(page);
    benchmark::DoNotOptimize(results.row(QStringLiteral("7")));
}

/// The same with nobody to tell of new rows and no way to find one.
void appendByHand(const QList<QList<CaseCard>> &pages) {
    QList<CaseCard> cards;
    QSet<QString> keys;
    for (const auto &page : pages) {
        for (const auto &card : page) {
            const auto before = keys.size();
            keys.insert(card.key);
            if (keys.size() > before)
                cards.append(card);
        }
    }
    benchmark::DoNotOptimize(cards.last());
}

} // namespace

int main(int argc, char **argv) {
    const auto few = pages(10'000);
    const auto many = pages(100'000);
    measure("append/10,000 cards/codec", [&] { appendPages(few); });
    measure("append/10,000 cards/reference", [&] { appendByHand(few); });
    measure("append/100,000 cards/codec", [&] { appendPages(many); });
    measure("append/100,000 cards/reference", [&] { appendByHand(many); });

    const auto saved = SampleRecords::shortCards().items.mid(0, 10'000);
    SavedSearch search(saved);
    search.matching(QStringLiteral("a"));
    measure("search/first text", [&] {
        SavedSearch fresh(saved);
        benchmark::DoNotOptimize(fresh.matching(QStringLiteral("a rare text")));
    });
    measure("search/next text",
            [&] { benchmark::DoNotOptimize(search.matching(QStringLiteral("a rare text"))); });

    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
