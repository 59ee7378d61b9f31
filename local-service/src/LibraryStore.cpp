#include "LibraryStore.h"

#include "Database.h"
#include "LibraryMerge.h"
#include "Session.h"

#include "records/Json.h"

namespace {

const auto conversationKind = QStringLiteral("conversation");

/// A change and the item that it makes, as JSON; empty for a removal.
struct Incoming {
    const LibraryChange *change;
    QByteArray content;
};

QByteArray contentOf(const LibraryChange &change) {
    if (change.deleted)
        return {};
    return change.kind == conversationKind ? Json::encode(*change.conversation)
                                           : Json::encode(*change.card);
}

/// What a conversation says, whenever it was saved.
QByteArray wordsOf(Conversation conversation) {
    conversation.updatedAt = {};
    return Json::encode(conversation);
}

/// What became of a change.
struct Outcome {
    /// Under which the text of a conflict is preserved; empty without a conflict.
    QString preservedKey;
    /// Which the change's author knows by it; below 0 for a change of old, of which that was not
    /// kept.
    qint64 version = 0;
};

bool saysTheSame(const std::optional<LibraryMerge::StoredItem> &stored,
                 const LibraryMerge::Change &claim) {
    return stored && stored->deleted == claim.deleted;
}

/// An item as it stands in the table, before its text is decoded.
struct Row {
    LibraryRecord record;
    QByteArray content;
};

/// One exchange with one account's library, inside a transaction.
class Exchange final {
public:
    Exchange(Database::Access &access, const Session &session)
        : m_access(access), m_account(session.number), m_writer(session.tokenDigest) {
        auto query = m_access.prepare("SELECT max(version) FROM library_items WHERE account = ?");
        query.bind(m_account).next();
        m_revision = query.integer(0);
    }

    qint64 revision() const { return m_revision; }

    /// A change that has come before has the outcome that it had.
    Outcome take(const Incoming &incoming) {
        auto known = m_access.prepare("SELECT preservedKey, version FROM library_changes"
                                      " WHERE account = ? AND opId = ?");
        known.bind(m_account).bind(incoming.change->opId.text);
        if (known.next())
            return {known.text(0), known.integer(1)};
        const auto outcome = apply(incoming);
        m_access
            .prepare("INSERT INTO library_changes (account, opId, preservedKey, version)"
                     " VALUES (?, ?, ?, ?)")
            .bind(m_account)
            .bind(incoming.change->opId.text)
            .bind(outcome.preservedKey)
            .bind(outcome.version)
            .run();
        return outcome;
    }

    QList<Row> rows() {
        auto query = m_access.prepare("SELECT kind, key, version, deleted, content"
                                      " FROM library_items WHERE account = ? ORDER BY version");
        query.bind(m_account);
        QList<Row> rows;
        while (query.next()) {
            LibraryRecord record;
            record.kind = query.text(0);
            record.key = query.text(1);
            record.version = query.integer(2);
            record.deleted = query.integer(3) != 0;
            rows.append({std::move(record), query.utf8(4)});
        }
        return rows;
    }

private:
    Outcome apply(const Incoming &incoming) {
        using enum LibraryMerge::Decision;
        const auto &change = *incoming.change;
        const auto claim = claimOf(incoming);
        const auto stored = find(change);
        switch (LibraryMerge::decide(stored, claim)) {
        case Keep:
            return {{}, saysTheSame(stored, claim) ? stored->version : claim.baseVersion};
        case Write:
            write(change, change.key, LibraryMerge::authorAfter(stored, claim), incoming.content);
            break;
        case KeepBoth:
            return {preserve(change), m_revision};
        }
        return {{}, m_revision};
    }

    LibraryMerge::Change claimOf(const Incoming &incoming) const {
        const auto &change = *incoming.change;
        const bool isConversation = change.kind == conversationKind;
        LibraryMerge::Change claim{isConversation ? LibraryMerge::Kind::Conversation
                                                  : LibraryMerge::Kind::Saved,
                                   change.baseVersion,
                                   m_writer,
                                   change.deleted,
                                   incoming.content,
                                   0};
        if (isConversation && !change.deleted) {
            claim.words = wordsOf(*change.conversation);
            claim.savedAt = change.conversation->updatedAt.milliseconds;
        }
        return claim;
    }

    std::optional<LibraryMerge::StoredItem> find(const LibraryChange &change) {
        auto query =
            m_access.prepare("SELECT version, base, writer, deleted, content FROM library_items"
                             " WHERE account = ? AND kind = ? AND key = ?");
        query.bind(m_account).bind(change.kind).bind(change.key);
        if (!query.next())
            return std::nullopt;
        LibraryMerge::StoredItem item{
            query.integer(0), {query.utf8(2), query.integer(1)}, query.integer(3) != 0, {}, 0};
        if (item.deleted)
            return item;
        item.words = query.utf8(4);
        if (change.kind == conversationKind) {
            const auto conversation = Json::decode<Conversation>(item.words);
            item.words = wordsOf(conversation);
            item.savedAt = conversation.updatedAt.milliseconds;
        }
        return item;
    }

    void write(const LibraryChange &change, const QString &key,
               const LibraryMerge::Authorship &author, const QByteArray &content) {
        m_access
            .prepare("INSERT OR REPLACE INTO library_items"
                     " (account, kind, key, version, base, writer, deleted, content)"
                     " VALUES (?, ?, ?, ?, ?, ?, ?, ?)")
            .bind(m_account)
            .bind(change.kind)
            .bind(key)
            .bind(++m_revision)
            .bind(author.baseVersion)
            .bind(author.writer)
            .bind(qint64(change.deleted))
            .bind(content)
            .run();
    }

    QString preserve(const LibraryChange &change) {
        auto copy = *change.conversation;
        copy.id = Identifier::make();
        write(change, copy.id.text, {m_writer, change.baseVersion}, Json::encode(copy));
        return copy.id.text;
    }

    Database::Access &m_access;
    qint64 m_account;
    QByteArray m_writer;
    qint64 m_revision = 0;
};

LibraryRecord decoded(Row row) {
    if (row.record.deleted)
        return row.record;
    if (row.record.kind == conversationKind)
        row.record.conversation = Json::decode<Conversation>(std::move(row.content));
    else
        row.record.card = Json::decode<CaseCard>(std::move(row.content));
    return row.record;
}

} // namespace

LibraryReply LibraryStore::exchange(Database &database, const Session &session,
                                    const QList<LibraryChange> &changes) {
    QList<Incoming> incoming;
    for (const LibraryChange &change : changes)
        incoming.append({&change, contentOf(change)});

    LibraryReply reply;
    QList<QString> accepted;
    QList<LibraryConflict> conflicts;
    QList<AcceptedVersion> versions;
    QList<Row> rows;
    {
        Database::Access access(database);
        Database::Transaction transaction(access);
        Exchange exchange(access, session);
        for (const Incoming &item : incoming) {
            const auto outcome = exchange.take(item);
            accepted.append(item.change->opId.text);
            if (!outcome.preservedKey.isEmpty())
                conflicts.append({item.change->key, outcome.preservedKey});
            if (outcome.version >= 0)
                versions.append({item.change->opId.text, outcome.version});
        }
        reply.revision = exchange.revision();
        rows = exchange.rows();
        transaction.commit();
    }
    // Decoding a large library takes longer than reading it, and needs nobody else to wait.
    for (Row &row : rows)
        reply.records.append(decoded(std::move(row)));
    reply.accepted = std::move(accepted);
    reply.acceptedVersions = std::move(versions);
    if (!conflicts.isEmpty())
        reply.conflicts = std::move(conflicts);
    return reply;
}
