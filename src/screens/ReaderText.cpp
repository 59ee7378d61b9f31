#include "screens/ReaderText.h"

namespace {

const QLatin1String blankLine("\n\n");

} // namespace

QStringList ReaderText::pieces(const QString &text) {
    QStringList result;
    qsizetype begin = 0;
    for (auto cut = text.indexOf(blankLine, viewful); cut >= 0;
         cut = text.indexOf(blankLine, begin + viewful)) {
        result.append(text.mid(begin, cut - begin));
        begin = cut + blankLine.size();
    }
    result.append(text.mid(begin));
    return result;
}
