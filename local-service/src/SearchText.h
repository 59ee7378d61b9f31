#pragma once

#include <QStringList>

/// One idea of what a word is, for what is searched and for what is asked.
namespace SearchText {

/// The words of a text in its order, without case, diacritics or any punctuation: "Ørsted's" gives
/// "orsted" and "s".
QStringList words(const QString &text);

} // namespace SearchText
