#include "presentation/Fonts.h"
#include "presentation/FontFiles.h"

#include <QDir>
#include <QFile>
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

struct FontFile {
    QString file;
    QString family;
};

/// Fonts with all axes are for toolkits that can set them, in place of those cut at values.
bool isWanted(const QString &axes) {
    if (axes == QLatin1String("-"))
        return true;
    return (axes == QLatin1String("*")) == (QT_VERSION >= QT_VERSION_CHECK(6, 7, 0));
}

/// What the build was told to make: "<file> <source> <axes> <family>".
QList<FontFile> wantedFonts() {
    QList<FontFile> result;
    QFile table(QStringLiteral(QUILLMERE_INSTANCES));
    if (!table.open(QIODevice::ReadOnly))
        return result;
    for (const auto &line : QString::fromUtf8(table.readAll()).split(QLatin1Char('\n'))) {
        const auto words = line.simplified().split(QLatin1Char(' '));
        if (words.size() >= 4 && !line.startsWith(QLatin1Char('#')) && isWanted(words[2]))
            result.append({words[0], words.mid(3).join(QLatin1Char(' '))});
    }
    return result;
}

} // namespace

TEST(FontsTest, EveryFontIsEmbeddedAndHasTheLettersOfTheLatinLanguages) {
    const auto letters = QStringLiteral(u"AaZz09 .,:;!?()[]&%@#+-*/=\"'"
                                        u"ÁáÉéÍíÓóÚúÜüÑñ¿¡ÀàÂâÆæÇçÈèÊêËëÎîÏïÔôŒœÙùÛûŸÿ«»"
                                        u"ÄäÖöẞß„“ÃãÕõ‘’”…–—·€×\u202F");
    const auto arrows = QStringLiteral(u"→↗");
    const auto wanted = wantedFonts();
    ASSERT_FALSE(wanted.isEmpty());
    QSet<QString> families;
    for (const auto &[file, name] : wanted) {
        const QRawFont font(QStringLiteral(":/Fonts/") + file, 20);
        ASSERT_TRUE(font.isValid()) << file.toStdString();
        EXPECT_EQ(font.familyName(), name) << file.toStdString();
        EXPECT_EQ(FontFiles::family(file), name) << file.toStdString();
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
    EXPECT_EQ(families.size(), wanted.size());
    EXPECT_EQ(QDir(QStringLiteral(":/Fonts")).entryList({QStringLiteral("*.ttf")}).size(),
              wanted.size());
}

TEST(FontsTest, LatinTypeStandsAtTheSizeThatWasAskedFor) {
    EXPECT_EQ(latin.archivo(64, 850, 62).pixelSize(), 64);
    EXPECT_EQ(latin.reading(17).pixelSize(), 17);
    EXPECT_EQ(latin.field(20).pixelSize(), 20);
    EXPECT_EQ(latin.mono(11).pixelSize(), 11);
    // A size of nothing would be an error of the toolkit.
    EXPECT_GE(latin.reading(0.2).pixelSize(), 1);
}

TEST(FontsTest, ChineseJapaneseAndKoreanTypeIsSetSmaller) {
    for (const auto language :
         {AppLanguage::zhHans, AppLanguage::zhHant, AppLanguage::ja, AppLanguage::ko}) {
        const TypeFace face(language);
        EXPECT_EQ(face.archivo(50, 700, 79).pixelSize(), 41);
        EXPECT_EQ(face.archivo(50, 700, 80).pixelSize(), 44);
        EXPECT_EQ(face.archivo(50).pixelSize(), 44);
        EXPECT_EQ(face.reading(50).pixelSize(), 47);
        EXPECT_EQ(face.field(50).pixelSize(), 47);
        EXPECT_EQ(face.mono(50).pixelSize(), 50);
        // 23.5 goes up.
        EXPECT_EQ(face.reading(25).pixelSize(), 24);
    }
}

TEST(FontsTest, AFontThatExistsIsTakenAndElseTheNearestOne) {
    EXPECT_EQ(family(latin.archivo(20, 850, 62)), "Archivo 850 62");
    EXPECT_EQ(family(latin.archivo(20)), "Archivo 600 100");
    EXPECT_EQ(family(latin.archivo(20, 840, 64)), "Archivo 850 62");
    EXPECT_EQ(family(latin.archivo(20, 900, 120)), "Archivo 800 110");
    EXPECT_EQ(family(latin.archivo(20, 100, 10)), "Archivo 600 85");

    EXPECT_EQ(family(latin.mono(12, 400)), "Quillmere Mono 400");
    EXPECT_EQ(family(latin.mono(12, 600)), "Quillmere Mono 600");
    EXPECT_EQ(family(latin.mono(12, 700)), "Quillmere Mono 700");
    for (const int weight : {500, 300, 900})
        EXPECT_EQ(family(latin.mono(12, weight)), "Quillmere Mono 500");

    EXPECT_EQ(FontFiles::family(QStringLiteral("Unknown"), 400, 100), QString());
    EXPECT_EQ(FontFiles::family(QStringLiteral("Unknown.ttf")), QString());
}

TEST(FontsTest, ReadingTypeHasTheOpticalSizeOfItsSize) {
    EXPECT_EQ(family(latin.reading(17)), "Newsreader 400 18");
    EXPECT_EQ(family(latin.reading(30)), "Newsreader 400 30");
    EXPECT_EQ(family(latin.reading(4)), "Newsreader 400 14");
    EXPECT_EQ(family(latin.reading(100)), "Newsreader 400 48");
    EXPECT_EQ(family(latin.reading(18, 600)), "Newsreader 600 18");
    EXPECT_EQ(family(latin.reading(18, 400, true)), "Newsreader Italic 400 18");
    // The scaled size counts.
    EXPECT_EQ(family(latin.reading(21)), "Newsreader 400 22");
    EXPECT_EQ(family(japanese.reading(21)), "Newsreader 400 18");
}

TEST(FontsTest, TheSameRequestGivesTheSameFont) {
    for (int count = 0; count < 3; ++count) {
        EXPECT_EQ(latin.archivo(20, 700, 90), latin.archivo(20, 700, 90));
        EXPECT_EQ(japanese.reading(20), japanese.reading(20));
        EXPECT_EQ(latin.mono(12), latin.mono(12));
    }
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
    EXPECT_EQ(latin.leading(-2), -2);
    EXPECT_EQ(latin.leading(3), 3);
    EXPECT_EQ(japanese.leading(-2), 0);
    EXPECT_EQ(japanese.leading(3), 3);

    const auto font = latin.reading(20);
    const auto natural = QFontMetricsF(font).lineSpacing();
    EXPECT_GE(natural, 20);
    EXPECT_EQ(latin.lineHeight(font, -2), natural - 2);
    EXPECT_EQ(japanese.lineHeight(font, -2), natural);
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
