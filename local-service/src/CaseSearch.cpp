#include "CaseSearch.h"

namespace {

/// The words as a query of the text index. They hold letters and digits only, and the quotes make
/// sure that none is taken for an operator.
QString matchExpression(const QStringList &words) {
    return QLatin1Char('"') + words.join(QStringLiteral("\" AND \"")) + QStringLiteral("\" *");
}

QByteArray placeholders(qsizetype count) {
    QByteArray text;
    for (qsizetype index = 0; index < count; ++index)
        text += index == 0 ? "?" : ", ?";
    return text;
}

} // namespace

QByteArray CaseSearch::source() const {
    QByteArray text = words.isEmpty()
                          ? " FROM cases"
                          : " FROM case_words JOIN cases ON cases.number = case_words.rowid";
    text += " WHERE cases.year BETWEEN ? AND ?";
    if (!words.isEmpty())
        text += " AND case_words MATCH ?";
    if (archives)
        text += " AND cases.archive IN (" + placeholders(archives->size()) + ")";
    if (!category.isEmpty())
        text += " AND cases.category = ?";
    return text;
}

void CaseSearch::bindSource(Statement &statement) const {
    statement.bind(firstYear).bind(lastYear);
    if (!words.isEmpty())
        statement.bind(matchExpression(words));
    if (archives) {
        for (const QString &archive : *archives)
            statement.bind(archive);
    }
    if (!category.isEmpty())
        statement.bind(category);
}

QByteArray CaseSearch::ordering() const {
    switch (order) {
    case Order::Year:
        return " ORDER BY cases.year DESC, cases.title COLLATE NOCASE, cases.number";
    case Order::Significance:
        return " ORDER BY cases.significance DESC, cases.number";
    case Order::Recent:
        break;
    }
    if (words.isEmpty())
        return " ORDER BY cases.number";
    // Title, names, summary, body.
    return " ORDER BY bm25(case_words, 10.0, 6.0, 3.0, 1.0), cases.number";
}
