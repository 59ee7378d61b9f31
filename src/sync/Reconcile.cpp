// The reply of a synchronisation, laid into the library.
#include "sync/LibrarySync.h"

#include <QCollator>
#include <QSet>

#include <algorithm>

namespace {

const QString savedKind = QStringLiteral("saved");
const QString conversationKind = QStringLiteral("conversation");

/// Carries edits of an item whose earlier state the service has taken onto what it made of that
/// state: the version, and the copy under another key if the item was in conflict. A change that
/// the service took long ago may have made an older version than the newest one, and what another
/// device has written since is not in the edit.
void rebase(QList<LibraryChange> &pending, const LibraryReply &reply,
            const QList<LibraryChange> &sent, const QSet<QString> &accepted,
            const QHash<QString, qint64> &versions) {
    QHash<QString, const LibraryChange *> answered;
    for (const auto &change : sent) {
        const auto identity = change.identity();
        if (accepted.contains(change.opId.text) && !answered.contains(identity))
            answered.insert(identity, &change);
    }
    QHash<QString, qint64> made;
    for (const auto &told : reply.acceptedVersions.value_or(QList<AcceptedVersion>()))
        made.insert(told.opId, told.version);
    QHash<QString, QString> preservedKeys;
    for (const auto &conflict : reply.conflicts.value_or(QList<LibraryConflict>())) {
        if (!preservedKeys.contains(conflict.originalKey))
            preservedKeys.insert(conflict.originalKey, conflict.preservedKey);
    }

    for (auto &change : pending) {
        const auto earlier = answered.constFind(change.identity());
        if (earlier == answered.cend())
            continue;
        const auto preserved = Identifier::parse(preservedKeys.value((*earlier)->key));
        if (preserved && change.kind == conversationKind) {
            change.key = preserved->text;
            if (change.conversation)
                change.conversation->id = *preserved;
        }
        change.baseVersion =
            made.value((*earlier)->opId.text, versions.value(change.identity(), 0));
    }
}

/// The records that count: of an item that is told twice the last one does.
QList<const LibraryRecord *> countingRecords(const LibraryReply &reply,
                                             QHash<QString, qint64> &versions) {
    QList<const LibraryRecord *> counting;
    counting.reserve(reply.records.size());
    versions.reserve(reply.records.size());
    QSet<QString> repeated;
    for (const auto &record : reply.records) {
        const auto identity = record.identity();
        const auto before = versions.size();
        versions.insert(identity, record.version);
        if (versions.size() == before)
            repeated.insert(identity);
        counting.append(&record);
    }
    if (repeated.isEmpty())
        return counting;
    QHash<QString, const LibraryRecord *> last;
    for (const auto *record : std::as_const(counting))
        last.insert(record->identity(), record);
    counting.removeIf(
        [&](const LibraryRecord *record) { return last.value(record->identity()) != record; });
    return counting;
}

/// The items of the library to be. They lie in the reply and in the queue.
struct Items {
    QHash<QString, const CaseCard *> cards;
    QHash<Identifier, const Conversation *> conversations;
    /// The wall items of conversations that the service tells without one.
    QHash<Identifier, QString> pins;
};

Items liveItems(const QList<const LibraryRecord *> &records) {
    Items items;
    items.cards.reserve(records.size());
    items.conversations.reserve(records.size());
    for (const auto *record : records) {
        if (record->deleted)
            continue;
        if (record->card)
            items.cards.insert(record->card->key, &*record->card);
        if (record->conversation)
            items.conversations.insert(record->conversation->id, &*record->conversation);
    }
    return items;
}

/// The service may not keep which wall item a conversation is pinned as.
void keepPins(const QList<Conversation> &local, Items &items) {
    for (const auto &conversation : local) {
        if (!conversation.wallID)
            continue;
        const auto *told = items.conversations.value(conversation.id);
        if (told && !told->wallID)
            items.pins.insert(conversation.id, *conversation.wallID);
    }
}

/// What the service has yet to hear stays visible.
void overlay(const QList<LibraryChange> &pending, Items &items) {
    for (const auto &change : pending) {
        if (change.kind == savedKind) {
            if (change.deleted)
                items.cards.remove(change.key);
            else if (change.card)
                items.cards.insert(change.card->key, &*change.card);
            continue;
        }
        const auto id = Identifier::parse(change.key);
        if (change.deleted && id) {
            items.conversations.remove(*id);
        } else if (change.conversation) {
            items.conversations.insert(change.conversation->id, &*change.conversation);
            items.pins.remove(change.conversation->id);
        }
    }
}

// Equal titles and dates are ordered by identity, so that two devices show the same list.

/// Comparing titles by the rules of a language is slow, so what stood in the right order before
/// keeps it, and only the rest is sorted and merged in.
QList<CaseCard> byTitle(QHash<QString, const CaseCard *> cards, const QList<CaseCard> &before) {
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    const auto precedes = [&](const CaseCard *one, const CaseCard *other) {
        const auto order = collator.compare(one->title, other->title);
        return order != 0 ? order < 0 : one->key < other->key;
    };

    QList<const CaseCard *> ordered;
    QList<const CaseCard *> rest;
    for (const auto &card : before) {
        const auto *now = cards.take(card.key);
        if (!now)
            continue;
        const bool inOrder = ordered.isEmpty() || precedes(ordered.last(), now);
        (inOrder ? ordered : rest).append(now);
    }
    rest.append(cards.values());
    std::sort(rest.begin(), rest.end(), precedes);

    QList<const CaseCard *> merged;
    merged.reserve(ordered.size() + rest.size());
    std::merge(ordered.begin(), ordered.end(), rest.begin(), rest.end(), std::back_inserter(merged),
               precedes);
    QList<CaseCard> list;
    list.reserve(merged.size());
    for (const auto *card : std::as_const(merged))
        list.append(*card);
    return list;
}

QList<Conversation> newestFirst(const Items &items) {
    auto ordered = items.conversations.values();
    std::sort(ordered.begin(), ordered.end(), [](const auto *one, const auto *other) {
        return one->updatedAt != other->updatedAt ? other->updatedAt < one->updatedAt
                                                  : one->id.text < other->id.text;
    });
    QList<Conversation> list;
    list.reserve(ordered.size());
    for (const auto *conversation : std::as_const(ordered)) {
        list.append(*conversation);
        const auto pin = items.pins.constFind(conversation->id);
        if (pin != items.pins.cend())
            list.last().wallID = *pin;
    }
    return list;
}

} // namespace

void LibrarySync::shareUnchanged(const LocalLibrary &library, LibraryReply &reply) {
    QHash<QString, const CaseCard *> cards;
    cards.reserve(library.saved.size());
    for (const auto &card : library.saved)
        cards.insert(card.key, &card);
    QHash<Identifier, const Conversation *> conversations;
    conversations.reserve(library.conversations.size());
    for (const auto &conversation : library.conversations)
        conversations.insert(conversation.id, &conversation);

    for (auto &record : reply.records) {
        const auto *card = record.card ? cards.value(record.card->key) : nullptr;
        if (card && *record.card == *card)
            record.card = *card;
        const auto *conversation =
            record.conversation ? conversations.value(record.conversation->id) : nullptr;
        if (conversation && *record.conversation == *conversation)
            record.conversation = *conversation;
    }
}

void LibrarySync::reconcile(const LibraryReply &reply, const QList<LibraryChange> &sent,
                            LocalLibrary &library) {
    QList<LibraryChange> pending;
    if (library.sync)
        pending = std::move(library.sync->pending);

    const auto acceptedList = reply.accepted.value_or(QList<QString>());
    const QSet<QString> accepted(acceptedList.begin(), acceptedList.end());
    pending.removeIf(
        [&](const LibraryChange &change) { return accepted.contains(change.opId.text); });

    QHash<QString, qint64> versions;
    const auto records = countingRecords(reply, versions);
    rebase(pending, reply, sent, accepted, versions);
    auto items = liveItems(records);
    keepPins(library.conversations, items);
    overlay(std::as_const(pending), items);

    library.saved = byTitle(std::move(items.cards), library.saved);
    library.conversations = newestFirst(items);
    library.sync = LibrarySyncState{std::move(versions), std::move(pending)};
}
