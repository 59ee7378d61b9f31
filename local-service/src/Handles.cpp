#include "Handles.h"

#include <QList>

#include <algorithm>

namespace {

bool mayStandInAName(char32_t letter) {
    return QChar::isLetterOrNumber(letter) || QChar::isMark(letter) || letter == U' ' ||
           letter == U'.' || letter == U'_' || letter == U'-' || letter == U'\'';
}

} // namespace

QString Handles::accepted(const QString &handle) {
    auto name = handle.trimmed().normalized(QString::NormalizationForm_C);
    const auto letters = name.toUcs4();
    if (letters.size() < shortest || letters.size() > longest ||
        !std::all_of(letters.begin(), letters.end(), mayStandInAName) ||
        name.contains(QLatin1String("  ")))
        throw RequestError(400, QStringLiteral("bad_name"),
                           QStringLiteral("A name has %1 to %2 letters or digits; single blanks "
                                          "and the signs . _ - ' may stand among them.")
                               .arg(shortest)
                               .arg(longest));
    return name;
}

QString Handles::folded(const QString &handle) {
    return handle.trimmed().normalized(QString::NormalizationForm_KC).toCaseFolded();
}

RequestError Handles::taken() {
    return {409, QStringLiteral("name_taken"), QStringLiteral("This name is taken.")};
}
