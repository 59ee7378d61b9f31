#pragma once

#include "records/Library.h"

#include <QByteArray>
#include <QList>

/// The records of a list as they were when last written, and the text of each.
template <class Record>
class KeptTexts final {
public:
    /// The text of each record, with a comma before it. Encodes only those that are not among the
    /// kept ones.
    const QList<QByteArray> &update(const QList<Record> &records);

private:
    QList<Record> m_records;
    QList<QByteArray> m_texts;
};

/// Writes a library as the text of its file, and encodes only what has changed since the last time.
///
/// It holds what it wrote before and compares, so there is nothing to invalidate. Records share
/// their data with the kept ones until they are edited, which makes comparing cheap. As with any
/// implicitly shared value, a reference into the library must not be written through after the
/// library was handed in.
class LibraryEncoder final {
public:
    /// The text in pieces, in the form of files.
    QList<QByteArray> encode(const LocalLibrary &library);

private:
    const QByteArray &updateVersions(const QHash<QString, qint64> &versions);

    KeptTexts<CaseCard> m_saved;
    KeptTexts<Conversation> m_conversations;
    KeptTexts<LibraryChange> m_pending;
    QHash<QString, qint64> m_versions;
    QByteArray m_versionsText;
};
