#include "records/AppLanguage.h"

#include <gtest/gtest.h>

namespace {

using enum AppLanguage;

} // namespace

TEST(AppLanguageTest, TheFirstSupportedCodeDecides) {
    const std::pair<const char *, AppLanguage> cases[] = {
        {"zh zh-CN zh-Hans-CN zh-SG", zhHans},
        {"zh-Hant zh-Hant-HK zh-HK zh-TW zh-MO ZH-hk zh_TW.UTF-8", zhHant},
        {"pt-PT pt PT-br nl,pt,en xzh,pt", ptBR},
        {"en-GB nl system,en-US", en},
        {"fr-CA nl,fr", fr},
        {"ja-JP", ja},
        {"ko", ko},
        {"es-419", es},
        {"de-AT nl,sv,de,en", de},
    };
    for (const auto &[choices, language] : cases) {
        for (const auto &codes : QString::fromLatin1(choices).split(QLatin1Char(' ')))
            EXPECT_EQ(AppLanguages::resolve(codes.split(QLatin1Char(','))), language) << choices;
    }
    EXPECT_EQ(AppLanguages::resolve({QString()}), en);
    EXPECT_EQ(AppLanguages::resolve({}), en);
    const QStringList preferred = {QStringLiteral("ja-JP")};
    EXPECT_EQ(AppLanguages::effective(AppLanguage::system, preferred), ja);
    EXPECT_EQ(AppLanguages::effective(de, preferred), de);
}

TEST(AppLanguageTest, AStoredTextIsReadBackAndAnythingElseIsTheSystem) {
    QStringList texts;
    for (const auto language : AppLanguages::allCases) {
        texts.append(AppLanguages::rawValue(language));
        EXPECT_EQ(AppLanguages::saved(texts.last()), language);
        const bool chinese = language == zhHans || language == zhHant;
        EXPECT_EQ(AppLanguages::webCode(language), QString::fromLatin1(chinese ? "zh" : "en"));
        EXPECT_EQ(AppLanguages::isCJK(language), chinese || language == ja || language == ko);
        EXPECT_EQ(AppLanguages::name(language).isEmpty(), language == AppLanguage::system);
    }
    texts.sort();
    EXPECT_EQ(texts.join(QLatin1Char(' ')),
              QStringLiteral("de en es fr ja ko pt-BR system zh-Hans zh-Hant"));
    for (const auto *text : {"", "EN", "zh", "zh-hans", "pt", "nl"})
        EXPECT_EQ(AppLanguages::saved(QString::fromLatin1(text)), AppLanguage::system) << text;
    EXPECT_EQ(AppLanguages::saved(std::nullopt), AppLanguage::system);
}
