#include "screens/FilterLabels.h"

namespace {

bool sharesProfessions(const QString &archive) {
    return archive == QLatin1String("foible") || archive == QLatin1String("lumen") ||
           archive == QLatin1String("shift");
}

bool isInsideWord(QChar character) {
    return character.isLetterOrNumber() || character.isMark() || character == QLatin1Char('\'') ||
           character == QChar(0x2019);
}

QString withCapitals(QString text) {
    bool inside = false;
    for (auto &character : text) {
        if (!inside)
            character = character.toUpper();
        inside = isInsideWord(character);
    }
    return text;
}

} // namespace

QString FilterLabels::category(const QString &value, const QString &archive, const Words &words) {
    const auto key = sharesProfessions(archive)
                         ? QLatin1String("prof.") + value
                         : QLatin1String("cat.") + archive + QLatin1Char('.') + value;
    const auto text = words.text(key);
    return text == key ? withCapitals(value) : text;
}

QString FilterLabels::decade(const QString &value, const Words &words) {
    if (value == QLatin1String("before1940"))
        return words.text(QStringLiteral("before1940"));
    return value + QChar(0x2013) + QString::number(value.toLongLong() + 9);
}
