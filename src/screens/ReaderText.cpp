#include "screens/ReaderText.h"

namespace {

/// About a screenful, and a few milliseconds of work.
constexpr qsizetype enough = 2000;

const QLatin1String blankLine("\n\n");

} // namespace

QStringList ReaderText::pieces(const QString &text) {
    QStringList result;
    qsizetype begin = 0;
    for (auto cut = text.indexOf(blankLine, enough); cut >= 0;
         cut = text.indexOf(blankLine, begin + enough)) {
        result.append(text.mid(begin, cut - begin));
        begin = cut + blankLine.size();
    }
    result.append(text.mid(begin));
    return result;
}
