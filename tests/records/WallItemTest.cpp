#include "records/ArchiveStyle.h"
#include "records/Json.h"
#include "records/Wall.h"
#include "tests/records/RecordTexts.h"

#include <gtest/gtest.h>

namespace {

WallItem pinnedCase() {
    WallItem item;
    item.id = QStringLiteral("w1");
    item.kind = QStringLiteral("save");
    item.site = QStringLiteral("lumen");
    item.caseId = QStringLiteral("c7");
    return item;
}

WallItem pinnedChat(const QByteArray &body) {
    WallItem item;
    item.id = QStringLiteral("w2");
    item.kind = QStringLiteral("chat");
    item.body = QString::fromUtf8(body);
    item.createdAt = 1700000000000;
    return item;
}

} // namespace

TEST(WallItemTest, TheSiteNamesAnArchiveInThreeForms) {
    auto item = pinnedCase();
    for (const auto &archive : ArchiveStyle::ids()) {
        const auto domain = ArchiveStyle::domain(archive);
        for (const auto &site : {archive, domain, QString(domain).replace(u'.', u'-')}) {
            item.site = site;
            EXPECT_EQ(item.archiveID(), archive) << site.toStdString();
        }
        for (const auto &site : {archive.toUpper(), domain + u'.', archive + u'-', QString()}) {
            item.site = site;
            EXPECT_EQ(item.archiveID(), std::nullopt) << site.toStdString();
        }
    }
    item.site.reset();
    EXPECT_EQ(item.archiveID(), std::nullopt);
}

TEST(WallItemTest, ACardTakesTheBestTextsThatTheItemHas) {
    auto item = pinnedCase();
    const auto expectCard = [&](const char *era, const char *title, const char *summary) {
        CaseCard expected;
        expected.id = QStringLiteral("c7");
        expected.key = QStringLiteral("lumen:c7");
        expected.archive = QStringLiteral("lumen");
        expected.locale = QStringLiteral("en");
        expected.era = QLatin1String(era);
        expected.title = QLatin1String(title);
        expected.summary = QLatin1String(summary);
        EXPECT_EQ(item.caseCard(), expected) << title;
    };
    expectCard("", "c7", "");
    item.card = WallCard{QStringLiteral("1940s"), QStringLiteral("card title"),
                         QStringLiteral("problem"), std::nullopt};
    expectCard("1940s", "card title", "problem");
    item.title = QStringLiteral("item title");
    item.card->highlight = QStringLiteral("highlight");
    expectCard("1940s", "item title", "highlight");
    // An empty text is a text.
    item.title = item.card->highlight = QString();
    expectCard("1940s", "", "");

    // None without a known archive and a case.
    item.site = QStringLiteral("elsewhere.example");
    EXPECT_EQ(item.caseCard(), std::nullopt);
    item = pinnedCase();
    item.caseId.reset();
    EXPECT_EQ(item.caseCard(), std::nullopt);
}

TEST(WallItemTest, AChatStandsUnderTheItemsOwnIdAndDate) {
    const auto body = recordText("SavedChat").text();
    auto expected = Json::decode<SavedChat>(body);
    ASSERT_NE(expected.id, QStringLiteral("w2"));
    expected.id = QStringLiteral("w2");
    expected.savedAt = 1700000000000;
    EXPECT_EQ(pinnedChat(body).chat(), expected);

    EXPECT_EQ(pinnedChat(R"({"lit":[],"question":"","cases":[],"turns":[]})").chat()->id,
              QStringLiteral("w2"));
}

TEST(WallItemTest, WithoutAReadableBodyThereIsNoChat) {
    for (const auto *body : {"", "null", "{", "[]", "{}", R"({"lit":[],"question":"","cases":[]})"})
        EXPECT_EQ(pinnedChat(body).chat(), std::nullopt) << body;
    auto item = pinnedChat(recordText("SavedChat").text());
    item.kind = QStringLiteral("Chat");
    EXPECT_EQ(item.chat(), std::nullopt);
    item.kind = QStringLiteral("chat");
    item.body.reset();
    EXPECT_EQ(item.chat(), std::nullopt);
}
