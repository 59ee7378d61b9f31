#include "service/LineReader.h"

#include <gtest/gtest.h>

namespace {

/// The lines of the bytes when they come in pieces of the given size.
QList<QByteArray> lines(const QByteArray &bytes, qsizetype size) {
    LineReader reader;
    QList<QByteArray> result;
    for (qsizetype at = 0; at < bytes.size(); at += size)
        result += reader.add(bytes.mid(at, size));
    return result + reader.finish();
}

} // namespace

TEST(LineReader, findsTheSameLinesHoweverTheBytesAreCut) {
    struct Row {
        QByteArray bytes;
        QList<QByteArray> lines;
    };
    const std::vector<Row> rows = {
        {"", {}},
        {"\n", {}},
        {"\r\n\r\n\n\r", {}},
        {"a", {"a"}},
        {"a\n", {"a"}},
        {"a\nb\rc\r\nd", {"a", "b", "c", "d"}},
        {"\n\na\r\r\n\nb\r\n\r\n", {"a", "b"}},
        {" a \n\t", {" a ", "\t"}},
        // Not the ends of a line: NEL, the line separator, the paragraph separator, form feed.
        {"a\xc2\x85"
         "b\xe2\x80\xa8"
         "c\xe2\x80\xa9"
         "d\fe\n",
         {"a\xc2\x85"
          "b\xe2\x80\xa8"
          "c\xe2\x80\xa9"
          "d\fe"}},
        {QByteArray("a\0b\nc", 5), {QByteArray("a\0b", 3), "c"}},
        {"\xc3\xa9\n\xe2\x82\xac\r\n\xf0\x9f\x98\x80",
         {"\xc3\xa9", "\xe2\x82\xac", "\xf0\x9f\x98\x80"}},
        // Not UTF-8: an overlong form, a surrogate, beyond the last character, half a character:
        // each byte is one fault.
        {"x\xc0\xaf y\n", {"x\xef\xbf\xbd\xef\xbf\xbd y"}},
        {"x\xed\xa0\x80 y\n", {"x\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd y"}},
        {"x\xf4\x90\x80\x80 y\n", {"x\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd\xef\xbf\xbd y"}},
        {"x\xe2\x82 y\n", {"x\xef\xbf\xbd\xef\xbf\xbd y"}},
        // A lone byte, and a character that the line end cuts.
        {"a\xff"
         "b\n",
         {"a\xef\xbf\xbd"
          "b"}},
        {"\xc3\n\xa9", {"\xef\xbf\xbd", "\xef\xbf\xbd"}},
        {"\xef\xbb\xbf\xc3\n", {"\xef\xbb\xbf\xef\xbf\xbd"}},
    };
    for (const auto &row : rows) {
        for (const qsizetype size : {1, 2, 3, 1000})
            EXPECT_EQ(lines(row.bytes, size), row.lines)
                << row.bytes.toPercentEncoding(" {}").constData() << " in pieces of " << size;
    }
}

TEST(LineReader, givesALineOnceItsEndIsThere) {
    LineReader reader;
    EXPECT_EQ(reader.add("{\"type\":"), QList<QByteArray>());
    EXPECT_EQ(reader.add("\"a\"}\r"), QList<QByteArray>{"{\"type\":\"a\"}"});
    EXPECT_EQ(reader.add("\n{}"), QList<QByteArray>());
    EXPECT_EQ(reader.finish(), QList<QByteArray>{"{}"});
    EXPECT_EQ(reader.finish(), QList<QByteArray>());
}
