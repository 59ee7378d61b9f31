#include "QuestionWords.h"
#include "Sentences.h"
#include "WordRoot.h"

#include <gtest/gtest.h>

namespace {

TEST(WordRoot, JoinsTheFormsOfAWordAndNoOthers) {
    const std::initializer_list<const char *> alike[] = {
        {"warn", "warned", "warning", "warnings"},
        {"sink", "sinks", "sank", "sinking", "sunken"},
        {"observe", "observer", "observers", "observation"},
        {"discovery", "discoveries"},
        {"stop", "stopped", "stopping", "stops"},
        {"hope", "hoped", "hoping"},
        {"careful", "care"},
        {"measure", "measures", "measured", "measuring", "measurement"},
    };
    for (const auto &forms : alike) {
        for (const char *form : forms)
            EXPECT_EQ(WordRoot::of(QLatin1String(form)),
                      WordRoot::of(QLatin1String(*forms.begin())))
                << form;
    }
    const std::pair<const char *, const char *> different[] = {
        {"care", "car"},       {"business", "bus"}, {"army", "arm"},
        {"hoping", "hopping"}, {"note", "not"},     {"station", "state"}};
    for (const auto &[one, other] : different)
        EXPECT_NE(WordRoot::of(QLatin1String(one)), WordRoot::of(QLatin1String(other))) << one;
    EXPECT_EQ(WordRoot::of(QStringLiteral("1628")), QStringLiteral("1628"));
    EXPECT_EQ(WordRoot::of(QString()), QString());
}

QStringList written(const char *question) {
    QStringList words;
    for (const auto &term : QuestionWords::terms(QString::fromUtf8(question)))
        words.append(term.written);
    return words;
}

TEST(QuestionWords, KeepsWhatTheQuestionIsAbout) {
    EXPECT_EQ(
        written("Why did the Vasa sink, and why do ships sink?"),
        (QStringList{QStringLiteral("Vasa"), QStringLiteral("sink"), QStringLiteral("ships")}));
    EXPECT_EQ(written("NASAの火星探査機はなぜ失われたのですか？"),
              QStringList{QStringLiteral("NASA")});
    EXPECT_TRUE(written("And what happened then?").isEmpty());
    const auto ship = QuestionWords::terms(QStringLiteral("boats")).first();
    EXPECT_TRUE(ship.kin.contains(WordRoot::of(QStringLiteral("ship"))));

    for (const char *english : {"Why did it fail?", "Tell me more", "the Vasa"})
        EXPECT_TRUE(QuestionWords::looksEnglish(QLatin1String(english))) << english;
    for (const char *other : {"Warum sank die Vasa?", "¿Por qué se hundió?", "Vasa", "なぜ"})
        EXPECT_FALSE(QuestionWords::looksEnglish(QString::fromUtf8(other))) << other;
}

TEST(Sentences, EndWhereTheyEnd) {
    const auto text = QString::fromUtf8(
        "The bridge over the St. Lawrence fell. N. J. Fjord weighed 2.3102 grams! “It held,” he "
        "said. £36 million went.\n\nWas it so? (Yes.)");
    const QStringList expected = {QStringLiteral("The bridge over the St. Lawrence fell."),
                                  QStringLiteral("N. J. Fjord weighed 2.3102 grams!"),
                                  QString::fromUtf8("“It held,” he said."),
                                  QString::fromUtf8("£36 million went."),
                                  QStringLiteral("Was it so? (Yes.)")};
    EXPECT_EQ(Sentences::of(text), expected);

    for (const char *back :
         {"It sank.", "But nobody came.", "In those years much changed.",
          "The second attempt failed.", "Its cost was high.", "In May 1972 it was sold."})
        EXPECT_FALSE(Sentences::standsAlone(QLatin1String(back))) << back;
    for (const char *alone : {"Vasa sank.", "In 1628 a ship sank on its way.", "The ship sank."})
        EXPECT_TRUE(Sentences::standsAlone(QLatin1String(alone))) << alone;
}

} // namespace
