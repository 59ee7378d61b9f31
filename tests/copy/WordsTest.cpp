#include "copy/Words.h"
#include "copy/Copy.h"

#include <gtest/gtest.h>

namespace {

QString text(const char *utf8) {
    return QString::fromUtf8(utf8);
}

} // namespace

TEST(WordsTest, NumbersAreWrittenAsTheLanguageDoes) {
    const std::pair<AppLanguage, const char *> cases[] = {
        {AppLanguage::en, "123,456"},      {AppLanguage::zhHans, "123,456"},
        {AppLanguage::zhHant, "123,456"},  {AppLanguage::ja, "123,456"},
        {AppLanguage::ko, "123,456"},      {AppLanguage::es, "123.456"},
        {AppLanguage::fr, "123\u202F456"}, {AppLanguage::de, "123.456"},
        {AppLanguage::ptBR, "123.456"},
    };
    for (const auto &[language, written] : cases) {
        const Words words(language);
        EXPECT_EQ(words.number(123456), text(written)) << written;
        EXPECT_EQ(words.number(70), text("70"));
        EXPECT_EQ(words.textWithNumber(text("browseAll"), 123456),
                  Copy::text(text("browseAll"), language).replace(text("{n}"), text(written)));
    }
    EXPECT_EQ(Words(AppLanguage::en).textWithNumber(text("{n} of {n}, {v}"), 2),
              text("2 of 2, {v}"));
    // Exact as far as a double is.
    EXPECT_EQ(Words(AppLanguage::en).number(9007199254740991.0), text("9,007,199,254,740,991"));
}

TEST(WordsTest, DatesFollowTheLanguageAndItsScript) {
    EXPECT_EQ(Words(AppLanguage::zhHans).locale().script(), QLocale::SimplifiedHanScript);
    EXPECT_EQ(Words(AppLanguage::zhHant).locale().script(), QLocale::TraditionalHanScript);
    EXPECT_EQ(Words(AppLanguage::ptBR).locale().territory(), QLocale::Brazil);
    EXPECT_EQ(Words(AppLanguage::fr).locale().monthName(3), text("mars"));

    const QDateTime moment(QDate(2026, 3, 4), QTime(23, 59));
    const std::pair<AppLanguage, const char *> cases[] = {
        {AppLanguage::en, "Mar 4, 2026"},      {AppLanguage::de, "04.03.2026"},
        {AppLanguage::fr, "4 mars 2026"},      {AppLanguage::es, "4 mar 2026"},
        {AppLanguage::ja, "2026/03/04"},       {AppLanguage::ko, "2026. 3. 4."},
        {AppLanguage::zhHans, "2026年3月4日"}, {AppLanguage::ptBR, "4 de mar. de 2026"},
    };
    for (const auto &[language, written] : cases)
        EXPECT_EQ(Words(language).mediumDate(moment.toUTC()), text(written));
}
