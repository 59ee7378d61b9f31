#include "SearchText.h"

#include <utility>

namespace {

/// Letters that people type as others although Unicode does not take them apart.
QLatin1String plainLetters(char32_t letter) {
    switch (letter) {
    case U'æ':
        return QLatin1String("ae");
    case U'œ':
        return QLatin1String("oe");
    case U'ø':
        return QLatin1String("o");
    case U'ł':
        return QLatin1String("l");
    case U'đ':
    case U'ð':
        return QLatin1String("d");
    case U'þ':
        return QLatin1String("th");
    case U'ħ':
        return QLatin1String("h");
    case U'ŧ':
        return QLatin1String("t");
    case U'ı':
        return QLatin1String("i");
    case U'ß':
        return QLatin1String("ss");
    default:
        return {};
    }
}

} // namespace

QStringList SearchText::words(const QString &text) {
    QStringList words;
    QString word;
    const auto letters = text.normalized(QString::NormalizationForm_KD).toCaseFolded().toUcs4();
    for (const char32_t letter : letters) {
        if (QChar::isMark(letter))
            continue;
        if (QChar::isLetterOrNumber(letter)) {
            const auto plain = plainLetters(letter);
            if (plain.isEmpty())
                word += QChar::fromUcs4(letter);
            else
                word += plain;
        } else if (!word.isEmpty()) {
            words.append(std::exchange(word, {}));
        }
    }
    if (!word.isEmpty())
        words.append(word);
    return words;
}
