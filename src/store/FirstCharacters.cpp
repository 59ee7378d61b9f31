#include "store/FirstCharacters.h"

#include <QTextBoundaryFinder>

QString firstCharacters(const QString &text, int count) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype end = 0;
    for (int character = 0; character < count && end < text.size(); ++character)
        end = finder.toNextBoundary();
    return text.first(end);
}
