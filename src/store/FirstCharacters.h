#pragma once

#include <QString>

/// The first so many characters of a text, as people count them: an emoji with its skin colour, a
/// letter with its accents, a syllable of jamo are one each, and none is ever cut.
QString firstCharacters(const QString &text, int count);
