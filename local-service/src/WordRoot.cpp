#include "WordRoot.h"

#include <QHash>

#include <algorithm>
#include <array>
#include <initializer_list>

namespace {

/// The irregular forms that people use in questions, each behind its plain form.
const QHash<QString, QString> &irregularForms() {
    static const auto forms = [] {
        constexpr std::array lines = {"begin began begun",
                                      "bend bent",
                                      "break broke broken",
                                      "bring brought",
                                      "build built",
                                      "buy bought",
                                      "catch caught",
                                      "choose chose chosen",
                                      "deal dealt",
                                      "draw drew drawn",
                                      "drive drove driven",
                                      "eat ate eaten",
                                      "fall fell fallen",
                                      "feel felt",
                                      "fight fought",
                                      "fly flew flown",
                                      "forget forgot",
                                      "grow grew grown",
                                      "hear heard",
                                      "hide hid hidden",
                                      "hold held",
                                      "keep kept",
                                      "lead led",
                                      "leave left",
                                      "lend lent",
                                      "lose lost",
                                      "pay paid",
                                      "rise rose risen",
                                      "run ran",
                                      "sell sold",
                                      "send sent",
                                      "shake shook",
                                      "shrink shrank",
                                      "sink sank sunken",
                                      "speak spoke spoken",
                                      "spend spent",
                                      "steal stole",
                                      "swim swam",
                                      "teach taught",
                                      "tear tore torn",
                                      "throw threw",
                                      "understand understood",
                                      "weave wove woven",
                                      "win won",
                                      "write wrote written",
                                      "woman women",
                                      "man men",
                                      "child children"};
        QHash<QString, QString> result;
        for (const char *line : lines) {
            const auto words = QString::fromLatin1(line).split(QLatin1Char(' '));
            for (qsizetype index = 1; index < words.size(); ++index)
                result.insert(words[index], words[0]);
        }
        return result;
    }();
    return forms;
}

bool isConsonant(QStringView word, qsizetype index) {
    switch (word[index].unicode()) {
    case 'a':
    case 'e':
    case 'i':
    case 'o':
    case 'u':
        return false;
    case 'y':
        return index == 0 || !isConsonant(word, index - 1);
    default:
        return true;
    }
}

/// How many times a vowel is followed by a consonant: roughly the syllables.
int measure(QStringView word) {
    int count = 0;
    bool afterVowel = false;
    for (qsizetype index = 0; index < word.size(); ++index) {
        const bool consonant = isConsonant(word, index);
        if (consonant && afterVowel)
            ++count;
        afterVowel = !consonant;
    }
    return count;
}

bool hasVowel(QStringView word) {
    for (qsizetype index = 0; index < word.size(); ++index) {
        if (!isConsonant(word, index))
            return true;
    }
    return false;
}

bool endsInDouble(QStringView word) {
    const auto size = word.size();
    return size >= 2 && word[size - 1] == word[size - 2] && isConsonant(word, size - 1);
}

/// Whether the word ends like "hop", whose "hoping" lost an e.
bool endsShort(QStringView word) {
    const auto size = word.size();
    if (size < 3 || !isConsonant(word, size - 3) || isConsonant(word, size - 2) ||
        !isConsonant(word, size - 1))
        return false;
    const char16_t last = word[size - 1].unicode();
    return last != u'w' && last != u'x' && last != u'y';
}

bool endsWithAny(QStringView word, std::initializer_list<const char *> endings) {
    return std::any_of(endings.begin(), endings.end(),
                       [&](const char *ending) { return word.endsWith(QLatin1String(ending)); });
}

struct Rule {
    const char *ending;
    const char *replacement;
};

/// Applies the rule with the longest ending that fits, if what stands before it has more than
/// `least` syllables.
template <std::size_t Count>
void replaceEnding(QString &word, const std::array<Rule, Count> &rules, int least) {
    const Rule *longest = nullptr;
    for (const Rule &rule : rules) {
        if (word.endsWith(QLatin1String(rule.ending)) &&
            (!longest || qstrlen(rule.ending) > qstrlen(longest->ending)))
            longest = &rule;
    }
    if (!longest)
        return;
    const QLatin1String ending(longest->ending);
    const auto stem = QStringView(word).chopped(ending.size());
    // What is left of "-ion" must look as if it had been a verb.
    if (measure(stem) <= least ||
        (ending == QLatin1String("ion") && !endsWithAny(stem, {"s", "t"})))
        return;
    word.chop(ending.size());
    word += QLatin1String(longest->replacement);
}

void dropPlural(QString &word) {
    if (endsWithAny(word, {"sses", "ies"}))
        word.chop(2);
    else if (word.endsWith(QLatin1Char('s')) && !word.endsWith(QLatin1String("ss")))
        word.chop(1);
}

void dropPastOrProgress(QString &word) {
    if (word.endsWith(QLatin1String("eed"))) {
        if (measure(QStringView(word).chopped(3)) > 0)
            word.chop(1);
        return;
    }
    const qsizetype length = word.endsWith(QLatin1String("ing"))  ? 3
                             : word.endsWith(QLatin1String("ed")) ? 2
                                                                  : 0;
    if (length == 0 || !hasVowel(QStringView(word).chopped(length)))
        return;
    word.chop(length);
    if (endsWithAny(word, {"at", "bl", "iz"}) || (measure(word) == 1 && endsShort(word)))
        word += QLatin1Char('e');
    else if (endsInDouble(word) && !endsWithAny(word, {"l", "s", "z"}))
        word.chop(1);
}

void dropFinalE(QString &word) {
    if (!word.endsWith(QLatin1Char('e')))
        return;
    const auto stem = QStringView(word).chopped(1);
    if (measure(stem) > 1 || (measure(stem) == 1 && !endsShort(stem)))
        word.chop(1);
}

constexpr std::array<Rule, 21> doubleEndings = {{
    {"ational", "ate"}, {"tional", "tion"}, {"enci", "ence"}, {"anci", "ance"}, {"izer", "ize"},
    {"abli", "able"},   {"alli", "al"},     {"entli", "ent"}, {"eli", "e"},     {"ousli", "ous"},
    {"ization", "ize"}, {"ation", "ate"},   {"ator", "ate"},  {"alism", "al"},  {"iveness", "ive"},
    {"fulness", "ful"}, {"ousness", "ous"}, {"aliti", "al"},  {"iviti", "ive"}, {"biliti", "ble"},
    {"logi", "log"},
}};

constexpr std::array<Rule, 7> adjectiveEndings = {{
    {"icate", "ic"},
    {"ative", ""},
    {"alize", "al"},
    {"iciti", "ic"},
    {"ical", "ic"},
    {"ful", ""},
    {"ness", ""},
}};

constexpr std::array<Rule, 19> lastEndings = {{
    {"al", ""},  {"ance", ""},  {"ence", ""}, {"er", ""},  {"ic", ""},  {"able", ""}, {"ible", ""},
    {"ant", ""}, {"ement", ""}, {"ment", ""}, {"ent", ""}, {"ion", ""}, {"ou", ""},   {"ism", ""},
    {"ate", ""}, {"iti", ""},   {"ous", ""},  {"ive", ""}, {"ize", ""},
}};

} // namespace

QString WordRoot::of(const QString &word) {
    const auto regular = irregularForms().value(word, word);
    const bool isPlain = std::all_of(regular.begin(), regular.end(), [](QChar letter) {
        return letter >= QLatin1Char('a') && letter <= QLatin1Char('z');
    });
    if (!isPlain || regular.size() < 3)
        return regular;

    QString root = regular;
    dropPlural(root);
    dropPastOrProgress(root);
    if (root.endsWith(QLatin1Char('y')) && hasVowel(QStringView(root).chopped(1)))
        root.replace(root.size() - 1, 1, QLatin1Char('i'));
    replaceEnding(root, doubleEndings, 0);
    replaceEnding(root, adjectiveEndings, 0);
    replaceEnding(root, lastEndings, 1);
    dropFinalE(root);
    if (measure(root) > 1 && root.endsWith(QLatin1String("ll")))
        root.chop(1);
    return root;
}
