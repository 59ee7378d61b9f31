#include "tests/simulation/Audit.h"

#include <algorithm>

namespace {

constexpr qsizetype largestBatch = 50;

} // namespace

void Audit::queued(const LibrarySyncState &state) {
    for (const auto &change : state.pending) {
        if (!m_makings.contains(change.opId.text))
            m_makings.insert(change.opId.text,
                             {static_cast<int>(m_makings.size()) + 1,
                              state.pending.size() > largestBatch, state.versions});
    }
}

void Audit::exchanged(const QByteArray &session, const LibraryUpload &upload,
                      const LibraryReply &reply, const std::optional<LibrarySyncState> &known) {
    QHash<QString, LibraryRecord> records;
    for (const auto &record : reply.records)
        records.insert(record.identity(), record);
    compare(records);

    QHash<QString, QString> copies;
    for (const auto &conflict : reply.conflicts.value_or(QList<LibraryConflict>()))
        copies.insert(conflict.originalKey, conflict.preservedKey);
    for (const auto &change : upload.changes) {
        auto identity = change.identity();
        const auto copy = copies.value(change.key);
        const auto before = m_outcomes.constFind(change.opId.text);
        if (before != m_outcomes.cend()) {
            if (*before != copy)
                violate(identity + QLatin1String(" came again, with another outcome"));
            continue;
        }
        m_outcomes.insert(change.opId.text, copy);
        if (!copy.isEmpty()) {
            judgeCopy(session, change, copy, known);
            m_copies.insert(copy);
            identity = QLatin1String("conversation|") + copy;
        }
        if (records.value(identity).version != m_records.value(identity).version)
            m_writes[identity].append({session, m_makings.value(change.opId.text).order,
                                       change.baseVersion, records.value(identity).version,
                                       change.deleted});
    }
    m_records = records;
}

void Audit::compare(const QHash<QString, LibraryRecord> &records) {
    for (auto before = m_records.cbegin(); before != m_records.cend(); ++before) {
        const auto after = records.constFind(before.key());
        if (after == records.cend())
            return violate(before.key() + QLatin1String(" vanished"));
        if (after->version < before->version)
            return violate(before.key() + QLatin1String(" went back"));
        if (after->version == before->version &&
            (after->deleted != before->deleted || after->conversation != before->conversation))
            return violate(before.key() + QLatin1String(" changed within a version"));
    }
}

void Audit::judgeCopy(const QByteArray &session, const LibraryChange &change, const QString &copy,
                      const std::optional<LibrarySyncState> &known) {
    const auto made = m_makings.value(change.opId.text);
    const auto identity = change.identity();
    if (isInConflictWithItself(session, change))
        violate(identity + QLatin1String(" in conflict with what its own session wrote"));

    // An edit from before the device heard of a copy must have followed it there, unless it waited
    // for its turn while an earlier one was out.
    const auto version = QString::number(m_records.value(identity).version);
    auto &[firstCopy, firstOrder] = m_met[QString::fromLatin1(session) + identity + version];
    const auto firstIdentity = QLatin1String("conversation|") + firstCopy;
    if (!firstCopy.isEmpty() && firstOrder < made.order && !made.waits && known &&
        known->versions.contains(firstIdentity) && !made.versions.contains(firstIdentity))
        violate(identity + QLatin1String(" in conflict again with the same version"));
    firstCopy = copy;
    firstOrder = made.order;
}

bool Audit::isInConflictWithItself(const QByteArray &session, const LibraryChange &change) const {
    const auto writes = m_writes.value(change.identity());
    // One that has been overtaken by a later one may well be kept apart.
    if (writes.isEmpty() || writes.last().session != session ||
        writes.last().order > m_makings.value(change.opId.text).order)
        return false;
    // An answer that came in meanwhile was asked for before the words of others were seen.
    return std::none_of(writes.begin(), writes.end(), [&](const Write &write) {
        return write.session != session && !write.deleted && write.version > change.baseVersion &&
               write.version <= writes.last().base;
    });
}

void Audit::violate(const QString &what) {
    if (m_violation.isEmpty())
        m_violation = what;
}
