#include "screens/CaseQuery.h"
#include "screens/CaseResults.h"
#include "screens/FilterLabels.h"
#include "screens/SavedSearch.h"
#include "tests/screens/SampleCase.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QStringList keys(const QList<CaseCard> &cards) {
    QStringList result;
    for (const auto &card : cards)
        result.append(card.id);
    return result;
}

QList<CaseCard> cards(const QStringList &ids) {
    QList<CaseCard> result;
    for (const auto &id : ids)
        result.append(SampleCase::card(id));
    return result;
}

} // namespace

TEST(FilterLabels, ValuesReadAsTheLanguageHasThemOrWithCapitals) {
    const Words english(AppLanguage::en);
    struct Case {
        QString value;
        QString archive;
        QString label;
    };
    const Case categories[] = {
        {u"medicine"_s, u"lumen"_s, u"Medicine"_s},
        {u"timekeeping"_s, u"makers"_s, u"Timekeeping"_s},
        // The words of another archive do not count, and all archives together have none.
        {u"deep sea salvage"_s, u"foible"_s, u"Deep Sea Salvage"_s},
        {u"health-care"_s, QString(), u"Health-Care"_s},
        {u"people's courts"_s, u"ventures"_s, u"People's Courts"_s},
        {QString(), u"shift"_s, QString()},
    };
    for (const auto &[value, archive, label] : categories)
        EXPECT_EQ(FilterLabels::category(value, archive, english), label);

    EXPECT_EQ(FilterLabels::decade(u"before1940"_s, english), u"Before 1940"_s);
    EXPECT_EQ(FilterLabels::decade(u"1990"_s, english), u"1990\u20131999"_s);
    EXPECT_EQ(FilterLabels::decade(u"unknown"_s, english), u"unknown\u20139"_s);
}

TEST(CaseQuery, SendsEveryItemInItsOrderAlsoTheEmptyOnes) {
    CaseQuery query{.text = u"a b"_s,
                    .archive = {},
                    .category = u"science"_s,
                    .decade = u"1990"_s,
                    .year = {},
                    .sort = u"recent"_s,
                    .archives = {u"lumen"_s, u"makers"_s}};
    const auto sent = [](const CaseQuery &query) {
        QString text;
        for (const auto &item : query.items(30, u"de"_s))
            text += item.key + u'=' + item.value + u'&';
        return text;
    };
    EXPECT_EQ(sent(query), u"q=a b&archive=&category=science&archives=lumen,makers&decade=1990&"
                           "year=&sort=recent&offset=30&locale=de&"_s);
    query.year = u"1994"_s;
    EXPECT_TRUE(sent(query).contains(u"&decade=&year=1994&"_s)) << "a year stands for its decade";
}

TEST(CaseResults, APageAddsOnlyItsNewCasesInOneInsertion) {
    CaseResults results;
    results.replace(cards({u"a"_s, u"b"_s}));
    QSignalSpy inserted(&results.model(), &QAbstractListModel::rowsInserted);
    QSignalSpy reset(&results.model(), &QAbstractListModel::modelReset);

    results.append(cards({u"b"_s, u"c"_s, u"a"_s, u"d"_s}));
    EXPECT_EQ(keys(results.cards()), QStringList({u"a"_s, u"b"_s, u"c"_s, u"d"_s}));
    EXPECT_EQ(results.row(u"foible:d"_s), 3);
    ASSERT_EQ(inserted.count(), 1);
    EXPECT_EQ(inserted[0][1].toInt(), 2);
    EXPECT_EQ(inserted[0][2].toInt(), 3);

    results.append(cards({u"d"_s, u"a"_s}));
    EXPECT_EQ(inserted.count(), 1) << "nothing new, nothing reported";
    EXPECT_EQ(reset.count(), 0);

    results.replace(cards({u"c"_s}));
    EXPECT_EQ(results.row(u"foible:a"_s), -1);
    results.append(cards({u"a"_s}));
    EXPECT_EQ(results.row(u"foible:a"_s), 1);

    results.update(cards({u"a"_s, u"c"_s}));
    EXPECT_EQ(results.row(u"foible:c"_s), 1) << "rows follow what moved";
    EXPECT_EQ(reset.count(), 1);
}

TEST(SavedSearch, FindsTextsInTitleAndSummaryIgnoringCase) {
    CaseCard bridge = SampleCase::card(u"bridge"_s);
    bridge.title = u"Die Große Brücke"_s;
    bridge.summary = u"ended in RUINS"_s;
    CaseCard other = SampleCase::card(u"other"_s);
    other.title = u"\u00c9tude"_s;
    SavedSearch search({bridge, other});

    const std::pair<QString, QStringList> searches[] = {
        {QString(), {u"bridge"_s, u"other"_s}},
        {u"GROSSE br\u00dcCKE"_s, {u"bridge"_s}},
        {u"ruins"_s, {u"bridge"_s}},
        // Title and summary are one text with a blank between.
        {u"br\u00fccke ended"_s, {u"bridge"_s}},
        {u"e\u0301tude"_s, {u"other"_s}},
        {u"foible"_s, {}},
        {u" "_s, {u"bridge"_s, u"other"_s}},
    };
    for (const auto &[text, found] : searches)
        EXPECT_EQ(keys(search.matching(text)), found) << text.toStdString();

    // A dotted and a dotless i are two letters in Turkish.
    const QLocale before;
    CaseCard river = SampleCase::card(u"river"_s);
    river.title = u"K\u0131z\u0131l\u0131rmak"_s;
    for (const auto language : {QLocale::Turkish, QLocale::English}) {
        QLocale::setDefault(language);
        SavedSearch turkish({river});
        EXPECT_EQ(turkish.matching(u"kizil"_s).size(), language == QLocale::Turkish ? 0 : 1);
    }
    QLocale::setDefault(before);
}
