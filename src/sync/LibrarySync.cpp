#include "sync/LibrarySync.h"

#include <algorithm>

namespace {

const QString savedKind = QStringLiteral("saved");
const QString conversationKind = QStringLiteral("conversation");

LibrarySyncState &stateOf(LocalLibrary &library) {
    return library.sync ? *library.sync : library.sync.emplace();
}

/// A change against the newest version that is known.
LibraryChange changeOf(const QString &kind, const QString &key, const LibrarySyncState &state) {
    LibraryChange change;
    change.kind = kind;
    change.key = key;
    change.baseVersion = state.versions.value(change.identity(), 0);
    return change;
}

LibraryChange changeOf(const CaseCard &card, const LibrarySyncState &state) {
    auto change = changeOf(savedKind, card.key, state);
    change.card = card;
    return change;
}

LibraryChange changeOf(const Conversation &conversation, const LibrarySyncState &state) {
    auto change = changeOf(conversationKind, conversation.id.text, state);
    change.conversation = conversation;
    return change;
}

const LibraryChange *queuedChange(const QString &kind, const QString &key,
                                  const LibrarySyncState &state) {
    const auto &pending = state.pending;
    const auto found = std::find_if(pending.begin(), pending.end(), [&](const auto &change) {
        return change.key == key && change.kind == kind;
    });
    return found == pending.end() ? nullptr : &*found;
}

void enqueue(const LibraryChange &change, LibrarySyncState &state) {
    state.pending.removeIf([&](const LibraryChange &earlier) {
        return earlier.key == change.key && earlier.kind == change.kind;
    });
    state.pending.append(change);
}

/// The same as if each change had been queued after the other, without a search for each.
QList<LibraryChange> queueOf(const QList<LibraryChange> &changes) {
    QHash<QString, qsizetype> lastPlace;
    for (qsizetype at = 0; at < changes.size(); ++at)
        lastPlace.insert(changes[at].identity(), at);
    QList<LibraryChange> queue;
    queue.reserve(lastPlace.size());
    for (qsizetype at = 0; at < changes.size(); ++at) {
        if (lastPlace.value(changes[at].identity()) == at)
            queue.append(changes[at]);
    }
    return queue;
}

} // namespace

void LibrarySync::prepare(LocalLibrary &library) {
    if (library.sync)
        return;
    auto &state = stateOf(library);
    QList<LibraryChange> changes;
    changes.reserve(library.saved.size() + library.conversations.size());
    for (const auto &card : std::as_const(library.saved))
        changes.append(changeOf(card, state));
    for (const auto &conversation : std::as_const(library.conversations))
        changes.append(changeOf(conversation, state));
    state.pending = queueOf(changes);
}

void LibrarySync::enqueueCard(const CaseCard &card, CardEdit edit, LocalLibrary &library) {
    auto &state = stateOf(library);
    auto change = changeOf(card, state);
    if (edit == CardEdit::removed) {
        change.deleted = true;
        change.card.reset();
    }
    enqueue(change, state);
}

std::optional<qint64> LibrarySync::baseVersion(const Identifier &conversation,
                                               const LocalLibrary &library) {
    if (!library.sync)
        return std::nullopt;
    if (const auto *queued = queuedChange(conversationKind, conversation.text, *library.sync))
        return queued->baseVersion;
    const auto &versions = library.sync->versions;
    const auto known = versions.constFind(conversationKind + QLatin1Char('|') + conversation.text);
    return known == versions.cend() ? std::nullopt : std::optional(*known);
}

void LibrarySync::enqueueConversation(const Conversation &conversation,
                                      std::optional<qint64> given, LocalLibrary &library) {
    auto &state = stateOf(library);
    auto change = changeOf(conversation, state);
    change.baseVersion = given ? *given : baseVersion(conversation.id, library).value_or(0);
    enqueue(change, state);
}

void LibrarySync::deleteConversation(const Conversation &conversation, LocalLibrary &library) {
    auto &state = stateOf(library);
    auto change = changeOf(conversationKind, conversation.id.text, state);
    change.baseVersion = baseVersion(conversation.id, library).value_or(0);
    change.deleted = true;
    enqueue(change, state);
}
