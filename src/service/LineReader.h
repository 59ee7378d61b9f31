#pragma once

#include <QByteArray>
#include <QList>

/// Turns bytes, in whatever pieces they come, into lines. A line ends at LF, CR or CRLF and comes
/// without its end; empty lines are left out. Bytes that are not UTF-8 become U+FFFD.
class LineReader final {
public:
    /// The lines that the bytes complete, in order.
    QList<QByteArray> add(const QByteArray &bytes);

    /// What came after the last line end, once no more bytes come: one line, or none.
    QList<QByteArray> finish();

private:
    void endLine(QList<QByteArray> &lines);

    QByteArray m_line;
};
