#include "records/Json.h"
#include "records/Library.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <gtest/gtest.h>

namespace {

QString readText(const QByteArray &literal) {
    return Json::decode<Items<QString>>("{\"items\":[\"" + literal + "\"]}").items.first();
}

} // namespace

TEST(TextTest, EveryTextSurvives) {
    Items<QString> texts;
    QString control;
    for (char16_t unit = 0; unit < 0x20; ++unit)
        control += QChar(unit);
    texts.items = {QString(), control, QStringLiteral("\"quoted\" \\ / \x7f"),
                   QStringLiteral(u"line\u2028paragraph\u2029"),
                   QStringLiteral(u"👩🏽‍🔬 🇳🇱 𝕏"),
                   QStringLiteral(u"e\u0301 is not é"),
                   // Inside a text a byte order mark is a part of it.
                   QStringLiteral(u"\uFEFF"), QStringLiteral(u"\uFEFF\uFEFFa\uFEFF"),
                   QStringLiteral(u"\uFFFE\uFFFF\U0010FFFF"), QString(100000, QLatin1Char('"')),
                   QString(100000, QChar(0x6A4B))};
    const auto written = Json::encode(texts);
    EXPECT_EQ(Json::decode<Items<QString>>(written).items, texts.items);
    LocalLibrary library;
    library.sync.emplace();
    for (const auto &key : texts.items.first(texts.items.size() - 2))
        library.sync->versions.insert(key, 1);
    EXPECT_EQ(Json::decode<LocalLibrary>(Json::encode(library)), library);

    // Another reader understands what was written.
    const auto elsewhere = QJsonDocument::fromJson(written)[QLatin1String("items")].toArray();
    ASSERT_EQ(elsewhere.size(), texts.items.size());
    for (qsizetype at = 0; at < texts.items.size(); ++at) {
        // It takes a mark at the start for none of the text.
        if (!texts.items[at].startsWith(QChar(0xFEFF))) {
            EXPECT_EQ(elsewhere[at].toString(), texts.items[at]);
        }
    }
}

TEST(TextTest, EscapesAreRead) {
    EXPECT_EQ(readText(R"(\"\\\/\b\f\n\r\t)"), QStringLiteral("\"\\/\b\f\n\r\t"));
    EXPECT_EQ(readText(R"(\uFEFF\u00e9\uD83D\uDE00)"), QStringLiteral(u"\uFEFFé😀"));
    EXPECT_EQ(readText(R"(a\u0000b)"), QString::fromUtf8("a\0b", 3));

    const auto health = Json::decode<Health>(
        R"({"\u006fk":true,"environment":"","chatMode":"","accountUrl":"","total":1})");
    EXPECT_TRUE(health.ok);
}

TEST(TextTest, HalfASurrogatePairIsWrittenAsValidText) {
    Items<QString> texts;
    texts.items = {QStringLiteral("a") + QChar(0xD83D) + QStringLiteral("b"),
                   QString(QChar(0xDE00))};
    const auto read = Json::decode<Items<QString>>(Json::encode(texts));
    ASSERT_EQ(read.items.size(), 2);
    EXPECT_TRUE(read.items[0].startsWith(QLatin1Char('a')));
    EXPECT_TRUE(read.items[0].endsWith(QLatin1Char('b')));
}
