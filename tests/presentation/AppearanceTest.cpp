#include "presentation/Appearance.h"
#include "presentation/Ink.h"
#include "tests/support/FixedAppearance.h"
#include "tests/support/MemoryPreferences.h"

#include <gtest/gtest.h>

namespace {

class AppearanceTest : public testing::Test {
protected:
    const QString key = QStringLiteral("appearance");
    MemoryPreferences preferences;
    FixedAppearance desktop;

    // The palette is one for the process.
    void TearDown() override { Ink::shared().setDark(false); }
};

QColor rgb(QRgb value) {
    return QColor::fromRgb(value);
}

} // namespace

TEST_F(AppearanceTest, ThePaletteFollowsTheAppearanceButPaperStaysPaper) {
    auto &ink = Ink::shared();
    int changes = 0;
    const QObject receiver;
    QObject::connect(&ink, &Ink::darkChanged, &receiver, [&] { ++changes; });

    ink.setDark(false);
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(ink.paper0(), rgb(0xEBE8E1));
    EXPECT_EQ(ink.paper(), rgb(0x141416));
    EXPECT_EQ(ink.sheet(), rgb(0xFFFDF9));
    EXPECT_EQ(ink.brand(), rgb(0x8F7600));
    const auto paperInk = ink.paperInk();

    ink.setDark(true);
    ink.setDark(true);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(ink.paper0(), rgb(0x0E0E11));
    EXPECT_EQ(ink.paper(), rgb(0xF4F1EA));
    EXPECT_EQ(ink.sheet(), rgb(0xF4F1EA));
    EXPECT_EQ(ink.brand(), rgb(0xFFE014));
    EXPECT_EQ(ink.paperInk(), paperInk);
    EXPECT_EQ(paperInk, rgb(0x0E0E11));
}

TEST_F(AppearanceTest, QmlReadsTheSamePalette) {
    for (const bool dark : {false, true}) {
        auto &ink = Ink::shared();
        ink.setDark(dark);
        EXPECT_EQ(ink.property("body").value<QColor>(), ink.paper());
        EXPECT_EQ(ink.property("onPaper").value<QColor>(), dark ? rgb(0x0E0E11) : rgb(0xF4F1EA));
    }
}

TEST_F(AppearanceTest, WithoutAChoiceTheSystemDecidesAndIsFollowed) {
    Appearance appearance(preferences, desktop);
    EXPECT_EQ(appearance.choiceName(), QStringLiteral("system"));
    EXPECT_FALSE(Ink::shared().isDark());
    desktop.setDark(true);
    EXPECT_TRUE(Ink::shared().isDark());
    desktop.setDark(false);
    EXPECT_FALSE(Ink::shared().isDark());
}

TEST_F(AppearanceTest, AChoiceIsStoredAndTheSystemNoLongerMatters) {
    Appearance appearance(preferences, desktop);
    int changes = 0;
    const QObject receiver;
    QObject::connect(&appearance, &Appearance::choiceChanged, &receiver, [&] { ++changes; });

    appearance.setChoiceName(QStringLiteral("dark"));
    EXPECT_TRUE(Ink::shared().isDark());
    EXPECT_EQ(preferences.value(key), QStringLiteral("dark"));
    appearance.setChoiceName(QStringLiteral("dark"));
    EXPECT_EQ(changes, 1);

    desktop.setDark(true);
    appearance.setChoiceName(QStringLiteral("light"));
    EXPECT_FALSE(Ink::shared().isDark());
    desktop.setDark(false);
    desktop.setDark(true);
    EXPECT_FALSE(Ink::shared().isDark());

    // Back to the system, whose wish changed meanwhile.
    appearance.setChoiceName(QStringLiteral("system"));
    EXPECT_TRUE(Ink::shared().isDark());
    EXPECT_EQ(preferences.value(key), QStringLiteral("system"));
    EXPECT_EQ(changes, 3);
}

TEST_F(AppearanceTest, AStoredChoiceHoldsFromTheStartAndAnUnknownOneIsTheSystem) {
    preferences.setValue(key, QStringLiteral("dark"));
    EXPECT_EQ(Appearance(preferences, desktop).choice(), Appearance::Choice::dark);
    EXPECT_TRUE(Ink::shared().isDark());

    for (const auto *text : {"", "Dark", "night", "0"}) {
        preferences.setValue(key, QString::fromLatin1(text));
        EXPECT_EQ(Appearance(preferences, desktop).choice(), Appearance::Choice::system) << text;
        EXPECT_FALSE(Ink::shared().isDark());
    }
}
