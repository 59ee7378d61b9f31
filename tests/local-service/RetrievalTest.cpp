#include "EmbeddedAnswers.h"

#include "records/ArchiveStyle.h"

#include <gtest/gtest.h>

namespace {

using E = EmbeddedAnswers;

struct Expectation {
    const char *question;
    /// Empty: all of them.
    const char *archive;
    /// Cases that must all be cited.
    const char *ids;
};

TEST(Retrieval, FindsTheCasesThatAQuestionIsAbout) {
    const Expectation expectations[] = {
        {"Why did the Vasa sink?", "", "vasa-stability-test"},
        {"What happened to the Mars probe?", "", "mars-climate-orbiter"},
        {"My boss ignores safety warnings. What should I do?", "", "therac-25"},
        {"We are about to roll out new software to all our servers. What can go wrong?", "",
         "knight-capital"},
        {"Is it a good idea to run a pilot before scaling up?", "", "tanganyika-groundnuts"},
        {"How do I know when to stop a project that is already half built?", "",
         "eastern-scheldt-barrier"},
        {"what about survivorship bias", "", "bombers-that-returned"},
        {"How did Sweden reduce traffic deaths?", "", "vision-zero"},
        {"How do I get pupils to learn to read?", "", "sobral-every-child-reads"},
        {"How do I learn better for an exam?", "", "learning-by-recalling"},
        {"How can a small team compete with big incumbents?", "", "southwest-three-aircraft"},
        {"What role did women play?", "", "st-luke-penny-savings-bank"},
        {"How was smallpox eradicated?", "shift", "smallpox-find-the-cases"},
        {"How do you make good porcelain?", "makers", "meissen-porcelain"},
        {"Why did Kodak fail?", "", "fujifilm-after-film"},
        {"How did fair trade begin?", "ventures", "max-havelaar-coffee-label"},
        {"hyperinflation", "", "rentenmark"},
        // The program's own examples.
        {"Why do clear warnings so often go unheeded?", "foible",
         "vajont-reservoir "
         "vasa-stability-test"},
        {"What do structural collapses have in common?", "foible", "quebec-bridge-dead-load"},
        {"Why were some correct ideas resisted for so long?", "",
         "curved-bacteria "
         "barley-for-the-navy"},
        {"How is trust won back once it has been lost?", "", "rentenmark"},
        {"What makes a structure last for centuries?", "", "florence-cathedral-dome"},
        {"What did better timekeeping make possible?", "", "shortt-free-pendulum"},
        {"When was the first product the wrong one?", "", "m-pesa-loan-pilot"},
        {"How have family firms carried on across generations?", "", "echigoya-one-price-for-all"},
    };
    for (const auto &[question, archive, ids] : expectations) {
        const auto archives =
            QString::fromUtf8(archive).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        const auto answer = E::answerer().answer(E::inquiry(QString::fromUtf8(question), archives));
        const auto expected = QString::fromUtf8(ids).split(QLatin1Char(' '));
        for (const QString &id : expected)
            EXPECT_TRUE(E::ids(answer).contains(id))
                << question << ": " << E::ids(answer).join(QLatin1Char(' ')).toStdString();
    }
}

TEST(Retrieval, AnswersEveryExampleOfEachArchiveFromThatArchive) {
    for (const QString &archive : ArchiveStyle::ids()) {
        for (int number = 0; number < 9; ++number) {
            const auto question = E::example(archive, number);
            const auto answer = E::answerer().answer(E::inquiry(question, {archive}));
            ASSERT_FALSE(answer.references.isEmpty()) << question.toStdString();
            EXPECT_TRUE(answer.references.first().strong.value()) << question.toStdString();
            for (const CaseCard &card : answer.references) {
                EXPECT_EQ(card.archive, archive);
                EXPECT_FALSE(card.note.value_or(QString()).isEmpty()) << question.toStdString();
            }
            // Whichever language it is asked in, it is the same question.
            for (const auto language : AppLanguages::allCases) {
                const auto asked = E::example(archive, number, language);
                const auto other = E::answerer().answer(E::inquiry(asked, {archive}, language));
                EXPECT_EQ(E::ids(other), E::ids(answer)) << asked.toStdString();
            }
            const auto everywhere = E::answerer().answer(E::inquiry(question));
            EXPECT_TRUE(!everywhere.references.isEmpty() &&
                        everywhere.references.first().strong.value())
                << question.toStdString();
        }
    }
}

TEST(Retrieval, FindsNothingRatherThanAnything) {
    const std::pair<const char *, AppLanguage> questions[] = {
        {"Tell me about Bitcoin", AppLanguage::en},
        {"What is the best pizza recipe?", AppLanguage::en},
        {"Is AI dangerous?", AppLanguage::en},
        {"How do I center a div in CSS?", AppLanguage::en},
        {"Who won the world cup in 2018?", AppLanguage::en},
        {"Why did this happen?", AppLanguage::en},
        {"?!", AppLanguage::en},
        // "die" and "war" stand in English cases and mean other things there.
        {"Wie war die Reise?", AppLanguage::de},
        {"Wie backt man einen Kuchen?", AppLanguage::de},
        {"如何做蛋糕？", AppLanguage::zhHans},
    };
    for (const auto &[question, language] : questions) {
        const auto text = QString::fromUtf8(question);
        const auto answer = E::answerer().answer(E::inquiry(text, {}, language));
        EXPECT_TRUE(answer.references.isEmpty())
            << question << ": " << E::ids(answer).join(QLatin1Char(' ')).toStdString();
        const auto request = E::answerer().words().text(QStringLiteral("askRequestMore"), language);
        EXPECT_TRUE(answer.text.contains(request)) << answer.text.toStdString();
    }
    const auto vasa = E::inquiry(QStringLiteral("Warum sank die Vasa?"), {}, AppLanguage::de);
    EXPECT_EQ(E::ids(E::answerer().answer(vasa)),
              QStringList{QStringLiteral("vasa-stability-test")});
}

/// A request in a talk that has cited the Vasa.
ChatRequest inTalk(const char *question, const char *lastAnswer = "Something.") {
    ChatRequest request;
    request.question = QString::fromUtf8(question);
    request.locale = QStringLiteral("en");
    request.messages = {
        {QStringLiteral("user"), QStringLiteral("Tell me about the ship that sank")},
        {QStringLiteral("assistant"), QString::fromUtf8(lastAnswer)}};
    request.cases = {{QStringLiteral("foible"), QStringLiteral("vasa-stability-test"), {}},
                     {QStringLiteral("foible"), QStringLiteral("long-gone"), {}}};
    return request;
}

TEST(Retrieval, KeepsToTheCasesAtHandWhenTheyAreMeant) {
    const auto first = [](ChatRequest request) {
        request.archives = {QStringLiteral("lumen"), QStringLiteral("makers")};
        const auto answer = E::answerer().answer(E::answerer().inquiry(request));
        return E::ids(answer).value(0).toStdString();
    };
    for (const char *question :
         {"Why did this happen?", "What can I apply?", "Summarize this", "What did it cost?",
          "And who had warned them?", "What happened next?"})
        EXPECT_EQ(first(inTalk(question)), "vasa-stability-test") << question;
    EXPECT_EQ(first(inTalk("How was porcelain made?")), "meissen-porcelain");
    // Pointed at: a turn that cites it and says nothing.
    EXPECT_EQ(first(inTalk("How was porcelain made?", "")), "vasa-stability-test");
}

TEST(Retrieval, LetsTheTalkDecideBetweenCases) {
    ChatRequest request;
    request.question = QStringLiteral("How did the secret get out?");
    request.messages = {{QStringLiteral("user"), QStringLiteral("Who first made porcelain?")},
                        {QStringLiteral("assistant"), QStringLiteral("Something.")}};
    const auto answer = E::answerer().answer(E::answerer().inquiry(request));
    EXPECT_EQ(E::ids(answer).value(0), QStringLiteral("meissen-porcelain"));
}

} // namespace
