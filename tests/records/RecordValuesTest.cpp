#include "records/ArchiveStyle.h"
#include "records/Catalogue.h"

#include "BuildSettings.h"
#include "records/Json.h"
#include "tests/records/RecordTexts.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QSet>
#include <gtest/gtest.h>

namespace {

CaseCard fullCard() {
    return Json::decode<CaseCard>(recordText("CaseCard").text());
}

} // namespace

TEST(RecordValuesTest, EveryFieldOfACardCountsInEqualityAndHash) {
    const auto whole = QJsonDocument::fromJson(recordText("CaseCard").text()).object();
    QSet<CaseCard> cards = {fullCard()};
    QSet<size_t> hashes = {qHash(fullCard())};
    qsizetype count = 1;
    const auto add = [&](const QJsonObject &object) {
        const auto card = Json::decode<CaseCard>(QJsonDocument(object).toJson());
        EXPECT_NE(card, fullCard());
        cards.insert(card);
        hashes.insert(qHash(card));
        ++count;
    };
    for (const auto &key : whole.keys()) {
        auto changed = whole;
        if (whole[key].isBool())
            changed[key] = !whole[key].toBool();
        else
            changed[key] = whole[key].toString() + QLatin1Char('x');
        add(changed);
    }
    for (const auto *key : {"strong", "note", "accessKey", "org"}) {
        auto without = whole;
        without.remove(QLatin1String(key));
        add(without);
    }
    auto empty = whole;
    empty[QLatin1String("note")] = QString();
    add(empty);
    // The same texts in each other's fields.
    auto swapped = whole;
    swapped[QLatin1String("id")] = whole[QLatin1String("key")];
    swapped[QLatin1String("key")] = whole[QLatin1String("id")];
    add(swapped);
    EXPECT_EQ(cards.size(), count);
    EXPECT_EQ(hashes.size(), count);
    EXPECT_TRUE(cards.contains(fullCard()));
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
