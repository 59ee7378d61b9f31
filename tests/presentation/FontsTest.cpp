#include "presentation/Fonts.h"
#include "presentation/FontFiles.h"

#include <QDir>
#include <QFontDatabase>
#include <QFontMetricsF>
#include <QRawFont>
#include <QRegularExpression>
#include <QSet>
#include <gtest/gtest.h>

#include <algorithm>

namespace {

const TypeFace latin(AppLanguage::fr);
const TypeFace japanese(AppLanguage::ja);

std::string family(const QFont &font) {
    return font.families().first().toStdString();
}

} // namespace

TEST(FontsTest, EveryFontIsEmbeddedAndHasTheLettersOfTheLatinLanguages) {
    const auto letters = QStringLiteral(u"AaZz09 .,:;!?()[]&%@#+-*/=\"'"
                                        u"ÁáÉéÍíÓóÚúÜüÑñ¿¡ÀàÂâÆæÇçÈèÊêËëÎîÏïÔôŒœÙùÛûŸÿ«»"
                                        u"ÄäÖöẞß„“ÃãÕõ‘’”…–—·€×\u202F");
    const auto arrows = QStringLiteral(u"→↗");
    const auto files = QDir(QStringLiteral(":/Fonts")).entryList({QStringLiteral("*.ttf")});
    ASSERT_GT(files.size(), 3);
    QSet<QString> families;
    for (const auto &file : files) {
        const auto name = FontFiles::family(file);
        const QRawFont font(QStringLiteral(":/Fonts/") + file, 20);
        ASSERT_TRUE(font.isValid()) << file.toStdString();
        EXPECT_EQ(font.familyName(), name) << file.toStdString();
        if (file[file.size() - 5].isDigit()) {
            EXPECT_EQ(file.chopped(4).replace(QLatin1Char('-'), QLatin1Char(' ')), name);
        }
        for (const auto letter : letters) {
            EXPECT_TRUE(font.supportsCharacter(letter))
                << file.toStdString() << " lacks " << QString(letter).toStdString();
        }
        for (const auto arrow : name.contains(QLatin1String("Mono")) ? arrows : QString())
            EXPECT_TRUE(font.supportsCharacter(arrow)) << file.toStdString();
        const auto spaces = font.advancesForGlyphIndexes(
            font.glyphIndexesForString(QStringLiteral(u"\u00A0\u202F")));
        EXPECT_NEAR(spaces[1].x() / spaces[0].x(), 0.67, 0.02) << "French punctuation stands close";
        families.insert(name);
    }
    EXPECT_EQ(families.size(), files.size());
}

TEST(FontsTest, ChineseJapaneseAndKoreanTypeIsSetSmaller) {
    const std::pair<QFont, int> sizes[] = {{latin.archivo(64, 850, 62), 64},
                                           {japanese.archivo(50, 700, 79), 41},
                                           {latin.archivo(50, 700, 80), 50},
                                           {japanese.archivo(50, 700, 80), 44},
                                           {latin.reading(17), 17},
                                           {japanese.reading(50), 47},
                                           {latin.field(20), 20},
                                           {japanese.field(50), 47},
                                           {latin.mono(11), 11},
                                           {japanese.mono(50), 50},
                                           {japanese.reading(25), 24},
                                           {TypeFace(AppLanguage::ko).reading(50), 47}};
    for (const auto &[font, size] : sizes)
        EXPECT_EQ(font.pixelSize(), size) << family(font);
    // A size of nothing would be an error of the toolkit.
    EXPECT_GE(latin.reading(0.2).pixelSize(), 1);
}

TEST(FontsTest, AFontThatExistsIsTakenAndElseTheNearestOne) {
    const std::pair<QFont, const char *> families[] = {
        {latin.archivo(20, 850, 62), "Archivo 850 62"},
        {latin.archivo(20), "Archivo 600 100"},
        {latin.archivo(20, 840, 64), "Archivo 850 62"},
        {latin.archivo(20, 900, 120), "Archivo 800 110"},
        {latin.archivo(20, 100, 10), "Archivo 600 85"},
        {latin.mono(12, 400), "Quillmere Mono 400"},
        {latin.mono(12, 600), "Quillmere Mono 600"},
        {latin.mono(12, 700), "Quillmere Mono 700"},
        {latin.mono(12, 300), "Quillmere Mono 500"},
        // By the optical size, once it has been scaled.
        {latin.reading(17), "Newsreader 400 18"},
        {latin.reading(4), "Newsreader 400 14"},
        {latin.reading(100), "Newsreader 400 48"},
        {latin.reading(18, 600), "Newsreader 600 18"},
        {latin.reading(18, 400, true), "Newsreader Italic 400 18"},
        {latin.reading(21), "Newsreader 400 22"},
        {japanese.reading(21), "Newsreader 400 18"}};
    for (const auto &[font, name] : families)
        EXPECT_EQ(family(font), name);
    EXPECT_EQ(FontFiles::family(QStringLiteral("Unknown"), 400, 100), QString());
    EXPECT_EQ(FontFiles::family(QStringLiteral("Unknown.ttf")), QString());
}

TEST(FontsTest, EachLanguageFallsBackToItsOwnShapesFirst) {
    const std::pair<AppLanguage, const char *> cases[] = {{AppLanguage::zhHans, "SC"},
                                                          {AppLanguage::zhHant, "TC"},
                                                          {AppLanguage::ja, "JP"},
                                                          {AppLanguage::ko, "KR"}};
    const auto cjk = QStringLiteral("Noto Sans CJK ");
    for (const auto &[language, region] : cases) {
        const TypeFace face(language);
        for (const auto &font :
             {face.archivo(20), face.reading(20), face.mono(12), face.field(20)}) {
            const auto families = font.families().filter(cjk);
            EXPECT_EQ(families, QStringList(cjk + QString::fromLatin1(region))) << region;
            const auto regions = font.families().filter(QStringLiteral(" CJK "));
            EXPECT_EQ(regions, regions.filter(QRegularExpression(
                                   QStringLiteral(" CJK %1$").arg(QLatin1String(region)))))
                << "another language's shapes";
        }
        EXPECT_EQ(family(face.reading(20)).substr(0, 10), "Newsreader");
        EXPECT_NE(family(face.field(20)).substr(0, 10), "Newsreader");
    }
    EXPECT_EQ(latin.reading(20).families().size(), 1);
}

TEST(FontsTest, FallbackFontsAreAskedForTheWeightAndNothingIsEmboldenedOnTop) {
    const std::pair<QFont, bool> cases[] = {{japanese.archivo(64, 850, 62), true},
                                            {japanese.archivo(16), true},
                                            {japanese.reading(18), false},
                                            {japanese.reading(18, 600), true},
                                            {japanese.mono(12), false},
                                            {japanese.mono(12, 600), true},
                                            {japanese.field(20), false},
                                            {latin.archivo(23, 700, 110), true}};
    for (const auto &[font, bold] : cases) {
        EXPECT_EQ(font.weight(), bold ? QFont::Bold : QFont::Normal) << family(font);
        const auto own = font.families().first();
        if (!own.contains(QLatin1String("CJK")))
            EXPECT_EQ(QFontDatabase::bold(own, QFontDatabase::styles(own).first()), bold)
                << family(font);
    }
}

TEST(FontsTest, TightLinesAreForLatinOnly) {
    const auto font = latin.reading(20);
    const auto natural = QFontMetricsF(font).lineSpacing();
    EXPECT_GE(natural, 20);
    EXPECT_EQ(latin.lineHeight(font, -2), natural - 2);
    EXPECT_EQ(japanese.lineHeight(font, -2), natural);
    EXPECT_EQ(japanese.lineHeight(font, 3), natural + 3);
}

TEST(FontsTest, AChangeOfLanguageChangesTheFaceOnce) {
    auto &fonts = Fonts::shared();
    int changes = 0;
    const QObject receiver;
    QObject::connect(&fonts, &Fonts::faceChanged, &receiver, [&] { ++changes; });
    fonts.setLanguage(AppLanguage::ko);
    fonts.setLanguage(AppLanguage::ko);
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(fonts.face().isCJK());
    fonts.setLanguage(AppLanguage::en);
    EXPECT_FALSE(fonts.face().isCJK());
}
