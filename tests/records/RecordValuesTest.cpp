#include "records/Account.h"
#include "records/ArchiveStyle.h"
#include "records/Catalogue.h"

#include "BuildSettings.h"
#include "records/Json.h"
#include "tests/records/RecordTexts.h"

#include <QSet>
#include <gtest/gtest.h>

#include <functional>

namespace {

CaseCard fullCard() {
    return Json::decode<CaseCard>(recordText("CaseCard").text());
}

} // namespace

TEST(RecordValuesTest, EveryFieldOfACardCountsInEqualityAndHash) {
    const std::function<void(CaseCard &)> changes[] = {
        [](CaseCard &card) { card.id += QLatin1Char('x'); },
        [](CaseCard &card) { card.key += QLatin1Char('x'); },
        [](CaseCard &card) { card.archive += QLatin1Char('x'); },
        [](CaseCard &card) { card.title += QLatin1Char('x'); },
        [](CaseCard &card) { card.summary += QLatin1Char('x'); },
        [](CaseCard &card) { card.category += QLatin1Char('x'); },
        [](CaseCard &card) { card.era += QLatin1Char('x'); },
        [](CaseCard &card) { card.locale += QLatin1Char('x'); },
        [](CaseCard &card) { card.strong = true; },
        [](CaseCard &card) { card.strong.reset(); },
        [](CaseCard &card) { card.note = QString(); },
        [](CaseCard &card) { card.note.reset(); },
        [](CaseCard &card) { card.accessKey = QStringLiteral("other"); },
        [](CaseCard &card) { card.org.reset(); },
        // The same text in the neighbouring field.
        [](CaseCard &card) { std::swap(card.id, card.key); },
        [](CaseCard &card) { std::swap(card.note, card.org); },
    };
    QSet<CaseCard> cards = {fullCard()};
    QSet<size_t> hashes = {qHash(fullCard())};
    for (const auto &change : changes) {
        auto card = fullCard();
        change(card);
        EXPECT_NE(card, fullCard());
        cards.insert(card);
        hashes.insert(qHash(card));
    }
    const auto distinct = static_cast<qsizetype>(std::size(changes)) + 1;
    EXPECT_EQ(cards.size(), distinct);
    EXPECT_EQ(hashes.size(), distinct);
    EXPECT_TRUE(cards.contains(fullCard()));
    EXPECT_EQ(qHash(fullCard(), 3), qHash(fullCard(), 3));
}

TEST(RecordValuesTest, TheCardOfAnEntryHasNoneOfTheOptionalFields) {
    const auto entry = Json::decode<CaseEntry>(recordText("CaseEntry").text());
    auto expected = fullCard();
    expected.strong.reset();
    expected.note.reset();
    expected.accessKey.reset();
    expected.org.reset();
    EXPECT_EQ(entry.card(), expected);
}

TEST(RecordValuesTest, TheAccountOfALoginIsTheOneOfItsReply) {
    const auto login = Json::decode<Login>(recordText("Login").text());
    EXPECT_EQ(login.account(), Json::decode<Account>(recordText("Account").text()));
    EXPECT_EQ(Login().account(), Account());
}

TEST(RecordValuesTest, ArchivesHaveTheirOrderColoursAndDomains) {
    EXPECT_EQ(ArchiveStyle::ids().join(QLatin1Char(' ')),
              QStringLiteral("foible lumen shift makers ventures"));
    QSet<std::uint32_t> colours;
    for (const auto &id : ArchiveStyle::ids()) {
        colours.insert(ArchiveStyle::color(id));
        EXPECT_TRUE(ArchiveStyle::domain(id).startsWith(id + QLatin1Char('.')));
    }
    EXPECT_EQ(colours.size(), 5);
    const auto unknown = QStringLiteral("Lumen");
    EXPECT_EQ(ArchiveStyle::color(unknown), ArchiveStyle::color(QStringLiteral("foible")));
    const QLatin1String defaultSuffix(BuildSettings::suffixDefault);
    for (const auto &id : {QStringLiteral("makers"), QStringLiteral("ventures"), unknown})
        EXPECT_EQ(ArchiveStyle::domain(id), id + defaultSuffix);
}
