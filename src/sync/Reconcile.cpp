// The reply of a synchronisation, laid into the library.
#include "sync/LibrarySync.h"

#include <QCollator>
#include <QSet>

#include <algorithm>

namespace {

const QString savedKind = QStringLiteral("saved");
const QString conversationKind = QStringLiteral("conversation");

/// Where the last record of each identity stands: the one that counts.
QHash<QString, qsizetype> lastPlaces(const QList<LibraryRecord> &records) {
    QHash<QString, qsizetype> places;
    places.reserve(records.size());
    for (qsizetype at = 0; at < records.size(); ++at)
        places.insert(records[at].identity(), at);
    return places;
}

/// Carries edits of an item whose earlier state the service has just taken onto what it made of
/// that state: the version, and the copy under another key if the item was in conflict.
void rebase(QList<LibraryChange> &pending, const LibraryReply &reply,
            const QList<LibraryChange> &sent, const QSet<QString> &accepted,
            const QHash<QString, qint64> &versions) {
    QHash<QString, QString> answered;
    for (const auto &change : sent) {
        const auto identity = change.identity();
        if (accepted.contains(change.opId.text) && !answered.contains(identity))
            answered.insert(identity, change.key);
    }
    QHash<QString, QString> preservedKeys;
    for (const auto &conflict : reply.conflicts.value_or(QList<LibraryConflict>())) {
        if (!preservedKeys.contains(conflict.originalKey))
            preservedKeys.insert(conflict.originalKey, conflict.preservedKey);
    }

    for (auto &change : pending) {
        const auto earlier = answered.constFind(change.identity());
        if (earlier == answered.cend())
            continue;
        const auto preserved = Identifier::parse(preservedKeys.value(*earlier));
        if (preserved && change.kind == conversationKind) {
            change.key = preserved->text;
            if (change.conversation)
                change.conversation->id = *preserved;
        }
        change.baseVersion = versions.value(change.identity(), 0);
    }
}

struct Items {
    QHash<QString, CaseCard> cards;
    QHash<Identifier, Conversation> conversations;
};

Items liveItems(const QList<LibraryRecord> &records, const QHash<QString, qsizetype> &places) {
    Items items;
    for (qsizetype at = 0; at < records.size(); ++at) {
        const auto &record = records[at];
        if (record.deleted || places.value(record.identity()) != at)
            continue;
        if (record.card)
            items.cards.insert(record.card->key, *record.card);
        if (record.conversation)
            items.conversations.insert(record.conversation->id, *record.conversation);
    }
    return items;
}

/// The service may not keep which wall item a conversation is pinned as.
void keepPins(const QList<Conversation> &local, Items &items) {
    for (const auto &conversation : local) {
        const auto found = items.conversations.find(conversation.id);
        if (found != items.conversations.end() && !found->wallID)
            found->wallID = conversation.wallID;
    }
}

/// What the service has yet to hear stays visible.
void overlay(const QList<LibraryChange> &pending, Items &items) {
    for (const auto &change : pending) {
        if (change.kind == savedKind) {
            if (change.deleted)
                items.cards.remove(change.key);
            else if (change.card)
                items.cards.insert(change.card->key, *change.card);
            continue;
        }
        const auto id = Identifier::parse(change.key);
        if (change.deleted && id)
            items.conversations.remove(*id);
        else if (change.conversation)
            items.conversations.insert(change.conversation->id, *change.conversation);
    }
}

// Equal titles and dates are ordered by identity, so that two devices show the same list.

QList<CaseCard> byTitle(const QHash<QString, CaseCard> &cards) {
    QCollator collator;
    collator.setCaseSensitivity(Qt::CaseInsensitive);
    auto list = cards.values();
    std::sort(list.begin(), list.end(), [&](const CaseCard &one, const CaseCard &other) {
        const auto order = collator.compare(one.title, other.title);
        return order != 0 ? order < 0 : one.key < other.key;
    });
    return list;
}

QList<Conversation> newestFirst(const QHash<Identifier, Conversation> &conversations) {
    auto list = conversations.values();
    std::sort(list.begin(), list.end(), [](const Conversation &one, const Conversation &other) {
        return one.updatedAt != other.updatedAt ? other.updatedAt < one.updatedAt
                                                : one.id.text < other.id.text;
    });
    return list;
}

} // namespace

void LibrarySync::reconcile(const LibraryReply &reply, const QList<LibraryChange> &sent,
                            LocalLibrary &library) {
    QList<LibraryChange> pending;
    if (library.sync)
        pending = std::move(library.sync->pending);

    const auto acceptedList = reply.accepted.value_or(QList<QString>());
    const QSet<QString> accepted(acceptedList.begin(), acceptedList.end());
    pending.removeIf(
        [&](const LibraryChange &change) { return accepted.contains(change.opId.text); });

    const auto places = lastPlaces(reply.records);
    QHash<QString, qint64> versions;
    versions.reserve(places.size());
    for (auto place = places.cbegin(); place != places.cend(); ++place)
        versions.insert(place.key(), reply.records[place.value()].version);

    rebase(pending, reply, sent, accepted, versions);
    auto items = liveItems(reply.records, places);
    keepPins(library.conversations, items);
    overlay(pending, items);

    library.saved = byTitle(items.cards);
    library.conversations = newestFirst(items.conversations);
    library.sync = LibrarySyncState{std::move(versions), std::move(pending)};
}
