#include "Sentences.h"

#include "SearchText.h"

#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace {

/// Whether the stop at the end of this beginning of a text only shortens a name, as in "St. Louis"
/// and "J. A. Henry".
bool endsInAbbreviation(QStringView beginning) {
    static const QRegularExpression abbreviation(
        QStringLiteral("(?:^|[\\s(“])(?:\\p{Lu}|St|Dr|Mr|Mrs|Ms|No|vs)\\.$"));
    return abbreviation.match(beginning).hasMatch();
}

const QSet<QString> &pointers() {
    static const auto words = [] {
        const auto list =
            QStringLiteral(
                "he she it they his hers its their theirs this these that those such both "
                "neither then there but and yet so or nor however instead still thus "
                "therefore otherwise meanwhile some others another once later")
                .split(QLatin1Char(' '));
        return QSet<QString>(list.begin(), list.end());
    }();
    return words;
}

/// How far into a sentence a word for somebody named before still tells that it leans on another.
constexpr qsizetype wordsOfABeginning = 5;

const QSet<QString> &pronouns() {
    static const QSet<QString> words = {QStringLiteral("he"),   QStringLiteral("she"),
                                        QStringLiteral("it"),   QStringLiteral("they"),
                                        QStringLiteral("him"),  QStringLiteral("her"),
                                        QStringLiteral("them"), QStringLiteral("his"),
                                        QStringLiteral("its"),  QStringLiteral("their")};
    return words;
}

const QSet<QString> &prepositions() {
    static const auto words = [] {
        const auto list =
            QStringLiteral("in at by from with of on for after before to under behind "
                           "without against beside besides as until do if when")
                .split(QLatin1Char(' '));
        return QSet<QString>(list.begin(), list.end());
    }();
    return words;
}

} // namespace

QStringList Sentences::of(const QString &text) {
    static const QRegularExpression end(QStringLiteral("[.!?][”’]?(\\s+)(?=[\\p{Lu}\\p{N}“‘£€$])"));
    QStringList sentences;
    const auto paragraphs = text.split(QStringLiteral("\n\n"), Qt::SkipEmptyParts);
    for (const QString &paragraph : paragraphs) {
        qsizetype begin = 0;
        auto ends = end.globalMatch(paragraph);
        while (ends.hasNext()) {
            const auto match = ends.next();
            const auto stop = match.capturedStart(1);
            if (endsInAbbreviation(QStringView(paragraph).first(stop)))
                continue;
            sentences.append(paragraph.mid(begin, stop - begin));
            begin = match.capturedEnd();
        }
        if (begin < paragraph.size())
            sentences.append(paragraph.mid(begin).trimmed());
    }
    return sentences;
}

bool Sentences::standsAlone(const QString &sentence) {
    const auto words = SearchText::words(sentence.left(60));
    if (words.isEmpty())
        return false;
    if (pointers().contains(words[0]))
        return false;
    if (words.size() < 2)
        return true;
    // "In those years", "In 1984 he".
    if (prepositions().contains(words[0]) &&
        (pointers().contains(words[1]) ||
         std::any_of(words.begin(), words.begin() + std::min(words.size(), wordsOfABeginning),
                     [](const QString &word) { return pronouns().contains(word); })))
        return false;
    // "The second", "the same", "the pattern": of what was told before.
    static const QSet<QString> ordinals = {QStringLiteral("second"), QStringLiteral("third"),
                                           QStringLiteral("same"),   QStringLiteral("two"),
                                           QStringLiteral("other"),  QStringLiteral("others"),
                                           QStringLiteral("latter"), QStringLiteral("result"),
                                           QStringLiteral("answer"), QStringLiteral("pattern")};
    return !((words[0] == QLatin1String("the") || words[0] == QLatin1String("a")) &&
             ordinals.contains(words[1]));
}
