#include "service/LineReader.h"

#include <QStringDecoder>

#include <algorithm>

namespace {

bool isLineEnd(char c) {
    return c == '\n' || c == '\r';
}

QByteArray repaired(const QByteArray &line) {
    if (QUtf8StringView(line).isValidUtf8())
        return line;
    // A mark at the start stays, and so does the trace of a character that is cut at the end.
    using Flag = QStringDecoder::Flag;
    QStringDecoder decoder(QStringDecoder::Utf8, Flag::ConvertInitialBom | Flag::Stateless);
    const QString text = decoder(line);
    return text.toUtf8();
}

} // namespace

QList<QByteArray> LineReader::add(const QByteArray &bytes) {
    QList<QByteArray> lines;
    auto begin = bytes.cbegin();
    while (true) {
        const auto end = std::find_if(begin, bytes.cend(), isLineEnd);
        m_line.append(begin, end - begin);
        if (end == bytes.cend())
            return lines;
        endLine(lines);
        begin = end + 1;
    }
}

QList<QByteArray> LineReader::finish() {
    QList<QByteArray> lines;
    endLine(lines);
    return lines;
}

void LineReader::endLine(QList<QByteArray> &lines) {
    // The LF of a CRLF ends an empty line, so that the two need not be told apart.
    if (!m_line.isEmpty())
        lines.append(repaired(m_line));
    m_line.clear();
}
