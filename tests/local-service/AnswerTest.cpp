#include "AnswerComposer.h"
#include "AnswerStream.h"
#include "EmbeddedAnswers.h"
#include "Sentences.h"

#include "records/ArchiveStyle.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

#include <algorithm>

namespace {

using E = EmbeddedAnswers;

const CaseData::WrittenCase *caseOf(const CaseCard &card) {
    static const auto files = E::files();
    for (const auto &file : files) {
        for (const auto &written : file.cases) {
            if (file.archive.id == card.archive && written.id == card.id)
                return &written;
        }
    }
    return nullptr;
}

/// All that the case says.
QString textOf(const CaseData::WrittenCase &written) {
    QStringList parts = {written.summary, written.tradeOut.value_or(QString())};
    for (const auto &section : written.sections)
        parts.append(section.body);
    return parts.join(QLatin1Char('\n'));
}

/// What an answer to a question of ours is expected to be worth.
constexpr int leastWords = 120;

int wordCount(const QString &text) {
    static const QRegularExpression blanks(QStringLiteral("\\s+"));
    return static_cast<int>(text.split(blanks, Qt::SkipEmptyParts).size());
}

/// The passages of an answer, without the opening and, where there is one, the closing.
QStringList passages(const Answer &answer) {
    const auto paragraphs = answer.text.split(QStringLiteral("\n\n"));
    return paragraphs.mid(1, answer.references.size());
}

/// That every sentence about a case stands in that case, and the cases in the order of the cards.
void expectFaithful(const Answer &answer, const std::string &question) {
    const auto texts = passages(answer);
    ASSERT_EQ(texts.size(), answer.references.size()) << question;
    for (qsizetype number = 0; number < texts.size(); ++number) {
        const auto *written = caseOf(answer.references[number]);
        ASSERT_TRUE(written) << question;
        auto lines = texts[number].split(QLatin1Char('\n'));
        EXPECT_EQ(lines.takeFirst(),
                  QStringLiteral("**%1** (%2)").arg(written->title, written->era))
            << question;
        const auto source = textOf(*written);
        for (QString line : std::as_const(lines)) {
            if (line.endsWith(QLatin1Char('*')))
                line = line.section(QLatin1Char('*'), 1, 1);
            const auto sentences = Sentences::of(line);
            for (const QString &sentence : sentences)
                EXPECT_TRUE(source.contains(sentence))
                    << question << ": " << sentence.toStdString();
        }
    }
}

void expectReadable(const Answer &answer, const std::string &question) {
    const int words = wordCount(answer.text);
    EXPECT_GE(words, leastWords) << question;
    EXPECT_LE(words, AnswerComposer::greatestWords) << question;
    const auto lines = answer.text.split(QLatin1Char('\n'));
    for (const QString &line : lines) {
        static const QRegularExpression block(QStringLiteral("^(#|[-*+] |\\d+[.)] |>|\\s)"));
        EXPECT_FALSE(block.match(line).hasMatch()) << line.toStdString();
        EXPECT_EQ(line.count(QLatin1Char('*')) % 2, 0) << line.toStdString();
    }
}

TEST(Answer, SaysOnlyWhatTheCasesSay) {
    for (const QString &archive : ArchiveStyle::ids()) {
        for (int number = 0; number < 9; ++number) {
            const auto question = E::example(archive, number);
            const auto answer = E::answerer().answer(E::inquiry(question, {archive}));
            expectFaithful(answer, question.toStdString());
            expectReadable(answer, question.toStdString());
        }
    }
}

TEST(Answer, FollowsTheProgramsSuggestions) {
    const auto files = E::files();
    const QString titles[] = {QStringLiteral("askSuggestWhy"), QStringLiteral("askSuggestDo"),
                              QStringLiteral("askSuggestSummarise"),
                              QStringLiteral("askSuggestOne")};
    for (const auto &file : files) {
        for (const auto &written : file.cases) {
            for (const QString &key : titles) {
                ChatRequest request;
                request.question = E::answerer().words().text(key, AppLanguage::fr);
                if (key == titles[3])
                    request.question += written.title;
                request.locale = QStringLiteral("en");
                request.cases = {{file.archive.id, written.id, {}}};
                const auto answer = E::answerer().answer(E::answerer().inquiry(request));
                const auto what = (key + QLatin1Char(' ') + written.id).toStdString();
                EXPECT_EQ(E::ids(answer), QStringList{written.id}) << what;
                expectFaithful(answer, what);
                EXPECT_LE(wordCount(answer.text), AnswerComposer::greatestWords) << what;
                const bool isLesson =
                    answer.text.contains(Sentences::of(written.sections.last().body).first());
                EXPECT_EQ(isLesson, key != titles[0]) << what;
            }
        }
    }
}

TEST(Answer, IsWeakWhereOnlyAWordIsShared) {
    const auto answer =
        E::answerer().answer(E::inquiry(QStringLiteral("What is the weather today?")));
    ASSERT_FALSE(answer.references.isEmpty());
    for (const CaseCard &card : answer.references)
        EXPECT_EQ(card.strong, false);
    EXPECT_TRUE(answer.text.startsWith(
        E::answerer().words().text(QStringLiteral("answer.open.loose"), AppLanguage::en)));
}

TEST(Answer, IsFramedInEveryLanguage) {
    const auto &words = E::answerer().words();
    static const QRegularExpression placeholder(QStringLiteral("\\{\\w+\\}"));
    const auto placeholders = [](const QString &text) {
        QStringList found;
        auto matches = placeholder.globalMatch(text);
        while (matches.hasNext())
            found.append(matches.next().captured());
        found.sort();
        return found;
    };
    const auto english = words.table(AppLanguage::en);
    for (const auto language : AppLanguages::allCases) {
        if (language == AppLanguage::system)
            continue;
        const auto table = words.table(language);
        for (auto entry = english.begin(); entry != english.end(); ++entry) {
            if (!entry.key().startsWith(QLatin1String("answer.")))
                continue;
            const auto name = (AppLanguages::rawValue(language) + entry.key()).toStdString();
            ASSERT_TRUE(table.contains(entry.key())) << name;
            EXPECT_EQ(placeholders(table.value(entry.key())), placeholders(entry.value())) << name;
        }
        // None is left open.
        const auto example = E::example(QStringLiteral("foible"), 0, language);
        const auto answer =
            E::answerer().answer(E::inquiry(example, {QStringLiteral("foible")}, language));
        EXPECT_TRUE(placeholders(answer.text).isEmpty()) << answer.text.toStdString();
        expectFaithful(answer, example.toStdString());
    }
}

TEST(Answer, TakesSignsOfMarkdownByTheLetter) {
    auto files = E::files();
    files = {files.first()};
    files.first().cases = {files.first().cases.first()};
    auto &written = files.first().cases.first();
    written.summary = QStringLiteral("A *star* and an under_score sank [here](x) `now`.");
    const Answerer answerer(files);
    ChatRequest request;
    request.question = QStringLiteral("Vasa");
    const auto text = answerer.answer(answerer.inquiry(request)).text;
    EXPECT_TRUE(text.contains(
        QStringLiteral("A \\*star\\* and an under\\_score sank \\[here\\](x) \\`now\\`.")))
        << text.toStdString();
}

TEST(AnswerStream, ComesInSmallPiecesThatMakeUpTheText) {
    const auto inquiry =
        E::inquiry(E::example(QStringLiteral("foible"), 0), {QStringLiteral("foible")});
    const auto answer = E::answerer().answer(inquiry);
    const auto steps = AnswerStream::steps(E::answerer().words(), inquiry, answer);
    QString text;
    std::chrono::milliseconds time{0};
    QStringList types;
    for (const auto &step : steps) {
        time += step.pause;
        if (types.isEmpty() || types.last() != step.event.type)
            types.append(step.event.type);
        if (step.event.type != QLatin1String("delta"))
            continue;
        text += *step.event.text;
        EXPECT_LE(wordCount(*step.event.text), 6);
        EXPECT_GE(step.pause.count(), 25);
        EXPECT_LE(step.pause.count(), 45);
    }
    EXPECT_EQ(text, answer.text);
    EXPECT_EQ(types, (QStringList{QStringLiteral("progress"), QStringLiteral("references"),
                                  QStringLiteral("delta"), QStringLiteral("done")}));
    EXPECT_EQ(steps.first().event.archive, QStringLiteral("foible"));
    EXPECT_LT(time, std::chrono::seconds(6));
}

} // namespace
