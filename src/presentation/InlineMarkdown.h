#pragma once

#include <QList>
#include <QString>
#include <QUrl>

/// A stretch of text in one style.
struct StyledRun {
    QString text;
    bool emphasis = false;
    bool strong = false;
    bool code = false;
    /// Where a press leads; empty for text that is no link.
    QUrl link;

    bool operator==(const StyledRun &) const = default;
    bool hasStyleOf(const StyledRun &other) const;
};

/// The inline part of markdown: emphasis, strong emphasis, code, links, and the escapes that go
/// with them. Headings, lists, quotes and all other blocks stay as they are written, and so do HTML
/// and every blank and line break. Of a picture its description remains.
namespace InlineMarkdown {

/// The length of the first paragraph of a text, with its line end. A blank line is a paragraph of
/// its own, and so is a fence of backticks with all that it holds. Nothing reaches from one
/// paragraph into another.
qsizetype paragraphLength(QStringView text);

/// A paragraph as it is to be shown. A link leads only where webURL allows; any other is plain
/// text. What cannot be read is shown as it is written.
QList<StyledRun> read(QStringView paragraph);

} // namespace InlineMarkdown
