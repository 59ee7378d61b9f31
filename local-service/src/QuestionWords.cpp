#include "QuestionWords.h"

#include "SearchText.h"
#include "WordRoot.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace {

/// Words that a question may hold without being about them.
const QSet<QString> &commonWords() {
    static const auto words = [] {
        const auto list = QString::fromLatin1(R"(
            a about above after again against ago all almost along already also
            although always am among an and another any anybody anyone anything are
            aren around as ask at away back be became because become been before
            being below between both but by came can cannot case cases come common
            could couldn d did didn do does doesn doing don done down during each
            either else enough especially etc even ever every everybody everyone
            everything example examples explain far few find first for from further
            gave get gets give given gives go goes going gone got had happen
            happened happens has have haven having he help her here hers him his how
            however i if in instead into is isn it its itself just kind know knew
            known later least let lets like likely ll long made make makes many
            matter may maybe me mean might mine more most much must my myself near
            need never next no nobody none nor not nothing now of off often on once
            one ones only or other others ought our ours out over own part people
            per perhaps play please possible put quite rather re really role s said
            same say see saw seem seen seldom several shall she should shouldn show
            so some somebody someone something sometimes soon still story such sure
            t take taken tell tend tends than that the their theirs them themselves
            then there these they thing things think this those though three through
            thus to together told too took toward turn two under until up upon us
            use used usually ve very want was way ways we well went were what
            whatever when whenever where whether which while who whom whose why will
            with within without would wouldn yes yet you your yours)")
                              .simplified();
        const auto split = list.split(QLatin1Char(' '));
        return QSet<QString>(split.begin(), split.end());
    }();
    return words;
}

/// Everyday words beside those that the cases use for the same thing. A line earns its place when
/// people ask with one word of it and cases answer with another.
const QHash<QString, QStringList> &kinOfRoots() {
    static const auto table = [] {
        constexpr std::array lines = {
            "ship boat vessel warship",
            "aircraft airplane plane airline flight",
            "car vehicle automobile",
            "train railway",
            "road traffic",
            "rocket spacecraft space",
            "clock timekeeping pendulum",
            "computer software program code computing app",
            "machine mechanism engine device",
            "instrument device",
            "weave loom textile fabric",
            "print printer",
            "bridge dam tower dome",
            "builder build construction construct",
            "farm farmer agriculture",
            "school pupil student teacher",
            "doctor physician hospital medicine medical",
            "disease illness sick epidemic",
            "kill die death dead",
            "worker employee staff labor",
            "boss manager superior",
            "leader director president chief",
            "founder entrepreneur",
            "company firm business startup venture",
            "customer client buyer",
            "partner partnership cofounder",
            "rival competitor competition incumbent compete established",
            "money capital fund",
            "saving cheap cheaper economy",
            "price cost expensive costly",
            "bank currency",
            "inflation hyperinflation",
            "government ministry state",
            "institution organization",
            "organization company",
            "rule principle",
            "mistake error blunder",
            "disaster catastrophe accident",
            "collapse fall buckle",
            "fail failure flop",
            "thrive prosper survive succeed success",
            "warning alarm",
            "ignore unheeded dismiss heed",
            "overlook miss",
            "skeptic sceptic critic doubter",
            "resist oppose reject",
            "assumption assume",
            "test trial experiment",
            "exam examination quiz test study",
            "reliable dependable",
            "precision accurate exact",
            "last endure lasting",
            "century lasting",
            "luck chance",
            "discovery discover",
            "invent inventor invention discover discovery",
            "decide decision",
            "learn lesson",
            "trust confidence",
            "turnaround reform",
            "sacrifice traded",
            "secret recipe",
            "start begin launch",
            "capable able expert competent",
            "talk convince persuade deceive",
            "big large great",
            "nature environment",
            "flood storm",
            "pollution contamination",
        };
        QHash<QString, QStringList> result;
        for (const char *line : lines) {
            QStringList roots;
            const auto words = QString::fromLatin1(line).split(QLatin1Char(' '));
            for (const QString &word : words)
                roots.append(WordRoot::of(word));
            for (const QString &root : std::as_const(roots)) {
                for (const QString &other : std::as_const(roots)) {
                    if (other != root && !result[root].contains(other))
                        result[root].append(other);
                }
            }
        }
        return result;
    }();
    return table;
}

/// The text without the letters of scripts that the cases are not written in. They stand next to
/// Latin names without a blank.
QString latinPart(QString text) {
    static const QRegularExpression foreign(
        QStringLiteral("[\\p{Han}\\p{Hiragana}\\p{Katakana}\\p{Hangul}]+"));
    return text.replace(foreign, QStringLiteral(" "));
}

bool says(const QString &word) {
    return word.size() > 1 && !commonWords().contains(word);
}

} // namespace

QList<QuestionWords::Term> QuestionWords::terms(const QString &question) {
    QList<Term> terms;
    QSet<QString> seen;
    // Word by word, so that what was written stays at hand.
    static const QRegularExpression blanks(QStringLiteral("[\\s\\p{P}\\p{S}]+"));
    const auto written = latinPart(question).split(blanks, Qt::SkipEmptyParts);
    for (const QString &piece : written) {
        const auto words = SearchText::words(piece);
        for (const QString &word : words) {
            const auto root = WordRoot::of(word);
            if (!says(word) || seen.contains(root))
                continue;
            seen.insert(root);
            terms.append({piece, root, kinOfRoots().value(root)});
        }
    }
    return terms;
}

QStringList QuestionWords::roots(const QString &text) {
    QStringList roots;
    const auto words = SearchText::words(text);
    for (const QString &word : words) {
        if (says(word))
            roots.append(WordRoot::of(word));
    }
    return roots;
}

bool QuestionWords::looksEnglish(const QString &text) {
    static const QSet<QString> tellTale = {
        QStringLiteral("the"),  QStringLiteral("of"),    QStringLiteral("what"),
        QStringLiteral("why"),  QStringLiteral("how"),   QStringLiteral("when"),
        QStringLiteral("who"),  QStringLiteral("which"), QStringLiteral("did"),
        QStringLiteral("does"), QStringLiteral("is"),    QStringLiteral("are"),
        QStringLiteral("this"), QStringLiteral("tell"),  QStringLiteral("about")};
    const auto words = SearchText::words(text);
    return std::any_of(words.begin(), words.end(),
                       [](const QString &word) { return tellTale.contains(word); });
}
