#pragma once

#include "records/Library.h"

#include <QHash>
#include <QSet>

/// Looks on at every exchange and notes what must never happen: a version that goes back, an item
/// that vanishes, and a copy of a conversation that nobody needed.
class Audit final {
public:
    /// The changes that a device has queued, as it sees the service's versions.
    void queued(const LibrarySyncState &state);

    /// A session's exchange. `known` is what its device knows of the service at this moment.
    void exchanged(const QByteArray &session, const LibraryUpload &upload,
                   const LibraryReply &reply, const std::optional<LibrarySyncState> &known);

    int copies() const { return static_cast<int>(m_copies.size()); }

    /// The first violation, in words; empty while all holds.
    const QString &violation() const { return m_violation; }

private:
    /// When a change was made, counted over all devices, and what its device knew then.
    struct Making {
        int order = 0;
        /// The queue was longer than a request.
        bool waits = false;
        QHash<QString, qint64> versions;
    };
    struct Write {
        QByteArray session;
        int order = 0;
        /// What was built on, and what came of it.
        qint64 base = 0;
        qint64 version = 0;
        bool deleted = false;
    };

    void compare(const QHash<QString, LibraryRecord> &records);
    void judgeCopy(const QByteArray &session, const LibraryChange &change, const QString &copy,
                   const std::optional<LibrarySyncState> &known);
    bool isInConflictWithItself(const QByteArray &session, const LibraryChange &change) const;
    void violate(const QString &what);

    QHash<QString, LibraryRecord> m_records;
    QHash<QString, Making> m_makings;
    /// Of each item, oldest first.
    QHash<QString, QList<Write>> m_writes;
    /// The copy that a change led to, if any.
    QHash<QString, QString> m_outcomes;
    QSet<QString> m_copies;
    /// The copy that a session got when it met a version of an item, and for which change.
    QHash<QString, std::pair<QString, int>> m_met;
    QString m_violation;
};
