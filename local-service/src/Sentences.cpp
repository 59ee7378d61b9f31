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

QSet<QString> wordSet(const char *words) {
    const auto list = QString::fromLatin1(words).split(QLatin1Char(' '));
    return QSet<QString>(list.begin(), list.end());
}

const QSet<QString> &pronouns() {
    static const auto words = wordSet("he she it they him her them his hers its their theirs");
    return words;
}

/// What at the beginning of a sentence leans on the one before.
bool pointsBack(const QString &word) {
    static const auto words =
        wordSet("this these that those such both neither then there but and yet so or nor however "
                "instead still thus therefore otherwise meanwhile some others another once later");
    return words.contains(word) || pronouns().contains(word);
}

bool isPreposition(const QString &word) {
    static const auto words = wordSet("in at by from with of on for after before to under behind "
                                      "without against beside besides as until do if when");
    return words.contains(word);
}

/// How far into a sentence a word for somebody named before still tells that it leans on another.
constexpr qsizetype wordsOfABeginning = 5;

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
    if (pointsBack(words[0]))
        return false;
    if (words.size() < 2)
        return true;
    // "In those years", "In 1984 he".
    const auto beginning = words.first(std::min(words.size(), wordsOfABeginning));
    const bool hasPronoun =
        std::any_of(beginning.begin(), beginning.end(),
                    [](const QString &word) { return pronouns().contains(word); });
    if (isPreposition(words[0]) && (pointsBack(words[1]) || hasPronoun))
        return false;
    // "The second", "the same", "the pattern": of what was told before.
    static const auto told = wordSet("second third same two other others latter result answer "
                                     "pattern");
    return !((words[0] == QLatin1String("the") || words[0] == QLatin1String("a")) &&
             told.contains(words[1]));
}
