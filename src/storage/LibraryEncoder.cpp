#include "storage/LibraryEncoder.h"

#include "records/JsonEncoder.h"

#include <algorithm>

namespace {

constexpr auto dates = DateForm::secondsSince2001;

// The keys below are written by hand: a record that gains a field needs it here as well.
static_assert(std::tuple_size_v<decltype(JsonFields<LocalLibrary>::table)> == 3);
static_assert(std::tuple_size_v<decltype(JsonFields<LibrarySyncState>::table)> == 2);

const QString &identity(const CaseCard &card) {
    return card.key;
}
const QString &identity(const Conversation &conversation) {
    return conversation.id.text;
}
const QString &identity(const LibraryChange &change) {
    return change.opId.text;
}

template <class Record>
QByteArray textWithComma(const Record &record) {
    JsonEncoder::Writer writer;
    writer.output.Put(',');
    JsonEncoder::write(writer, record, dates);
    auto text = writer.output.take();
    text.squeeze();
    return text;
}

void appendList(QList<QByteArray> &pieces, const QList<QByteArray> &texts) {
    if (texts.isEmpty()) {
        pieces.append(QByteArrayLiteral("[]"));
        return;
    }
    auto first = texts.first();
    first[0] = '[';
    pieces.append(first);
    pieces.append(texts.sliced(1));
    pieces.append(QByteArrayLiteral("]"));
}

} // namespace

template <class Record>
const QList<QByteArray> &KeptTexts<Record>::update(const QList<Record> &records) {
    if (records.isSharedWith(m_records))
        return m_texts;

    // An edit touches one place as a rule: what stands before and behind it is told by position.
    const auto common = std::min(records.size(), m_records.size());
    qsizetype front = 0;
    while (front < common && records[front] == m_records[front])
        ++front;
    qsizetype back = 0;
    while (back < common - front &&
           records[records.size() - 1 - back] == m_records[m_records.size() - 1 - back])
        ++back;

    const auto keptEnd = m_records.size() - back;
    QHash<QStringView, qsizetype> places;
    places.reserve(keptEnd - front);
    for (auto at = front; at < keptEnd; ++at)
        places.insert(identity(m_records[at]), at);

    QList<QByteArray> texts = m_texts.first(front);
    texts.reserve(records.size());
    for (auto at = front; at < records.size() - back; ++at) {
        const auto &record = records[at];
        const auto place = places.value(identity(record), -1);
        texts.append(place >= 0 && m_records[place] == record ? m_texts[place]
                                                              : textWithComma(record));
    }
    texts.append(m_texts.last(back));
    m_records = records;
    m_texts = std::move(texts);
    return m_texts;
}

const QByteArray &LibraryEncoder::updateVersions(const QHash<QString, qint64> &versions) {
    if (m_versionsText.isEmpty() || m_versions != versions) {
        JsonEncoder::Writer writer;
        JsonEncoder::write(writer, versions, dates);
        m_versions = versions;
        m_versionsText = writer.output.take();
    }
    return m_versionsText;
}

QList<QByteArray> LibraryEncoder::encode(const LocalLibrary &library) {
    QList<QByteArray> pieces;
    pieces.append(QByteArrayLiteral("{\"saved\":"));
    appendList(pieces, m_saved.update(library.saved));
    pieces.append(QByteArrayLiteral(",\"conversations\":"));
    appendList(pieces, m_conversations.update(library.conversations));
    if (library.sync) {
        pieces.append(QByteArrayLiteral(",\"sync\":{\"versions\":"));
        pieces.append(updateVersions(library.sync->versions));
        pieces.append(QByteArrayLiteral(",\"pending\":"));
        appendList(pieces, m_pending.update(library.sync->pending));
        pieces.append(QByteArrayLiteral("}"));
    }
    pieces.append(QByteArrayLiteral("}"));
    return pieces;
}
