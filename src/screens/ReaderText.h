#pragma once

#include <QString>
#include <QStringList>

/// Running text in pieces that a screen lays out one at a time. A long text is cut where a blank
/// line is; joined by blank lines the pieces are the text again.
namespace ReaderText {

/// In characters: about a screenful, and a few milliseconds of work.
inline constexpr qsizetype viewful = 2000;

QStringList pieces(const QString &text);

} // namespace ReaderText
