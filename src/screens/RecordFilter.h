#pragma once

#include "screens/TextSearch.h"

#include <QElapsedTimer>
#include <QHash>
#include <QList>
#include <QLocale>
#include <QTimer>
#include <QtConcurrentFilter>

#include <numeric>
#include <utility>

/// A text as filters compare it: without case by the rules of the locale, and with accents in one
/// form.
inline QString foldedText(const QString &text, const QLocale &locale) {
    return locale.toLower(text).toCaseFolded().normalized(QString::NormalizationForm_C);
}

/// Finds the records that hold what the user types. The folded text of a record is made once, in
/// the pauses of the event loop or when it is first looked at, and kept while the record stays as
/// it is; a longer query is looked for only in what the shorter one has found.
template <class Record>
class RecordFilter final {
public:
    using TextOf = QString (*)(const Record &);

    explicit RecordFilter(TextOf text) : m_text(text) {
        m_pause.callOnTimeout([this] { prepareSome(); });
    }

    /// Goes through the records before the user types, a little at a time.
    void prepare(const QList<Record> &records, const QLocale &locale) {
        follow(records, locale);
        m_prepared = 0;
        m_pause.start();
    }

    /// The records whose text contains the query, in their order; all for an empty query.
    QList<Record> matches(const QList<Record> &records, const QString &query,
                          const QLocale &locale) {
        if (query.isEmpty())
            return records;
        follow(records, locale);
        const auto wanted = foldedText(query, locale).toUtf8();
        if (m_query.isEmpty() || !wanted.contains(m_query))
            m_found = allRows();
        m_query = wanted;
        for (const auto row : std::as_const(m_found))
            folded(row);
        // Megabytes of text: this thread and those that are idle share them.
        QtConcurrent::blockingFilter(
            m_found, [&](qsizetype row) { return containsWords(m_folded.at(row), wanted); });

        QList<Record> result;
        result.reserve(m_found.size());
        for (const auto row : std::as_const(m_found))
            result.append(records[row]);
        return result;
    }

private:
    static constexpr qint64 mostMilliseconds = 3;

    void prepareSome() {
        QElapsedTimer elapsed;
        elapsed.start();
        while (m_prepared < m_records.size() && elapsed.elapsed() < mostMilliseconds)
            folded(m_prepared++);
        if (m_prepared == m_records.size())
            m_pause.stop();
    }

    QList<qsizetype> allRows() const {
        QList<qsizetype> rows(m_records.size());
        std::iota(rows.begin(), rows.end(), 0);
        return rows;
    }

    const QByteArray &folded(qsizetype row) {
        auto &text = m_folded[row];
        if (text.isNull())
            text = foldedText(m_text(m_records[row]), m_locale).toUtf8();
        return text;
    }

    /// Goes over to another list, with the texts of the records that are in both.
    void follow(const QList<Record> &records, const QLocale &locale) {
        if (records.isSharedWith(m_records) && locale == m_locale)
            return;
        QList<QByteArray> folded(records.size());
        if (locale == m_locale) {
            QHash<decltype(Record::id), qsizetype> rows;
            rows.reserve(m_records.size());
            for (qsizetype row = 0; row < m_records.size(); ++row)
                rows.insert(m_records[row].id, row);
            for (qsizetype row = 0; row < records.size(); ++row) {
                const auto before = rows.value(records[row].id, -1);
                if (before >= 0 && m_records[before] == records[row])
                    folded[row] = m_folded[before];
            }
        }
        m_records = records;
        m_folded = folded;
        m_prepared = 0;
        m_locale = locale;
        m_query.clear();
    }

    TextOf m_text;
    QLocale m_locale;
    QList<Record> m_records;
    /// For each record; null until it is needed. UTF-8, for half the memory of most texts.
    QList<QByteArray> m_folded;
    /// So many of them, from the first, have been made ready.
    qsizetype m_prepared = 0;
    QTimer m_pause;
    QByteArray m_query;
    /// The rows that hold the query.
    QList<qsizetype> m_found;
};
