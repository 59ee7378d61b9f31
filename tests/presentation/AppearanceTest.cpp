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

} // namespace

TEST_F(AppearanceTest, ThePaletteFollowsTheAppearanceButPaperStaysPaper) {
    auto &ink = Ink::shared();
    int changes = 0;
    const QObject receiver;
    QObject::connect(&ink, &Ink::darkChanged, &receiver, [&] { ++changes; });
    const auto paper = ink.property("body").value<QColor>();
    const auto paperInk = ink.paperInk();
    EXPECT_LT(paper.lightness(), ink.paper0().lightness());

    ink.setDark(false);
    ink.setDark(true);
    ink.setDark(true);
    EXPECT_EQ(changes, 1);
    EXPECT_NE(ink.property("body").value<QColor>(), paper);
    EXPECT_GT(ink.paper().lightness(), ink.paper0().lightness());
    EXPECT_GT(ink.paper().lightness(), ink.onPaper().lightness());
    EXPECT_EQ(ink.paperInk(), paperInk);
    EXPECT_LT(paperInk.lightness(), ink.sheet().lightness());
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

    appearance.setChoiceName(QStringLiteral("light"));
    desktop.setDark(true);
    EXPECT_FALSE(Ink::shared().isDark());

    // Back to the system, whose wish changed meanwhile.
    appearance.setChoiceName(QStringLiteral("system"));
    EXPECT_TRUE(Ink::shared().isDark());
    EXPECT_EQ(preferences.value(key), QStringLiteral("system"));
    EXPECT_EQ(changes, 3);
    desktop.setDark(false);
    EXPECT_FALSE(Ink::shared().isDark());
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
