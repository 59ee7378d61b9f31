#include "records/AppLanguage.h"

#include <QSet>
#include <gtest/gtest.h>

namespace {

using enum AppLanguage;

} // namespace

TEST(AppLanguageTest, TheFirstSupportedCodeDecides) {
    const std::pair<const char *, AppLanguage> cases[] = {
        {"zh", zhHans},
        {"zh-CN", zhHans},
        {"zh-Hans-CN", zhHans},
        {"zh-SG", zhHans},
        {"zh-Hant", zhHant},
        {"zh-Hant-HK", zhHant},
        {"zh-HK", zhHant},
        {"zh-TW", zhHant},
        {"zh-MO", zhHant},
        {"ZH-hk", zhHant},
        {"zh_TW.UTF-8", zhHant},
        {"pt-PT", ptBR},
        {"pt", ptBR},
        {"PT-br", ptBR},
        {"en-GB", en},
        {"fr-CA", fr},
        {"ja-JP", ja},
        {"ko", ko},
        {"es-419", es},
        {"de-AT", de},
        {"nl fr", fr},
        {"nl", en},
        {"", en},
        {"nl sv de en", de},
        {"system en-US", en},
        {"xzh pt", ptBR},
    };
    for (const auto &[codes, language] : cases) {
        const auto preferred = QString::fromLatin1(codes).split(QLatin1Char(' '));
        EXPECT_EQ(AppLanguages::resolve(preferred), language) << codes;
    }
    EXPECT_EQ(AppLanguages::resolve({}), en);
}

TEST(AppLanguageTest, OnlyTheSystemsChoiceAsksTheSystem) {
    const QStringList preferred = {QStringLiteral("ja-JP")};
    EXPECT_EQ(AppLanguages::effective(AppLanguage::system, preferred), ja);
    EXPECT_EQ(AppLanguages::effective(de, preferred), de);
}

TEST(AppLanguageTest, AStoredTextIsReadBackAndAnythingElseIsTheSystem) {
    QSet<QString> identities;
    for (const auto language : AppLanguages::allCases) {
        EXPECT_EQ(AppLanguages::saved(AppLanguages::rawValue(language)), language);
        identities.insert(AppLanguages::rawValue(language));
    }
    EXPECT_EQ(identities.size(), 10);
    EXPECT_EQ(AppLanguages::rawValue(zhHant), QStringLiteral("zh-Hant"));
    EXPECT_EQ(AppLanguages::rawValue(ptBR), QStringLiteral("pt-BR"));
    for (const auto *text : {"", "EN", "zh", "zh-hans", "pt", "nl"})
        EXPECT_EQ(AppLanguages::saved(QString::fromLatin1(text)), AppLanguage::system) << text;
    EXPECT_EQ(AppLanguages::saved(std::nullopt), AppLanguage::system);
}

TEST(AppLanguageTest, LanguagesKnowTheirWebCodeScriptAndName) {
    for (const auto language : AppLanguages::allCases) {
        const bool chinese = language == zhHans || language == zhHant;
        EXPECT_EQ(AppLanguages::webCode(language), QString::fromLatin1(chinese ? "zh" : "en"));
        EXPECT_EQ(AppLanguages::isCJK(language), chinese || language == ja || language == ko);
        EXPECT_EQ(AppLanguages::name(language).isEmpty(), language == AppLanguage::system);
    }
    EXPECT_EQ(AppLanguages::name(fr), QStringLiteral(u"Français"));
    EXPECT_EQ(AppLanguages::name(zhHant), QStringLiteral(u"繁體中文"));
}
