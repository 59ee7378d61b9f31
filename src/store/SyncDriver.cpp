// When the queued changes go to the service, and what becomes of its reply.
#include "platform/Clock.h"
#include "platform/Start.h"
#include "platform/Worker.h"
#include "store/AppStore.h"
#include "sync/LibrarySync.h"

namespace {

constexpr std::chrono::milliseconds pauseAfterEdit(700);
constexpr qsizetype batchSize = 50;
/// How often a reply is merged on a worker, if there was an edit each time, before the main thread
/// does it.
constexpr int mergesAside = 3;

const QString signedOut = QStringLiteral("Sign in to sync across devices.");
const QString running = QStringLiteral("Syncing…");
const QString synced = QStringLiteral("Synced with your account.");
const QString syncedWithConflicts =
    QStringLiteral("Synced. Both versions of a conversation were kept.");

/// A reply and the library that it makes of the one that this machine had.
struct Merge {
    LibraryReply reply;
    QList<LibraryChange> sent;
    LocalLibrary library;
    LibraryEncoder encoder;
    /// Whether it is another library than before.
    bool isNew = false;
};

/// Merges, and has the text of the file ready.
Merge carriedOut(Merge merge) {
    const LocalLibrary before = merge.library;
    LibrarySync::shareUnchanged(before, merge.reply);
    LibrarySync::reconcile(merge.reply, merge.sent, merge.library);
    merge.isNew = merge.library != before;
    merge.encoder.encode(merge.library);
    return merge;
}

QList<LibraryChange> pendingOf(const LocalLibrary &library) {
    return library.sync ? library.sync->pending : QList<LibraryChange>();
}

/// Whether nothing that a merge depends on has been edited since the copy was made.
bool isUntouched(const LocalLibrary &library, const LocalLibrary &copy) {
    return library.conversations.isSharedWith(copy.conversations) &&
           pendingOf(library).isSharedWith(pendingOf(copy));
}

QString notSynced(const QString &reason) {
    return QStringLiteral("Not synced: ") + reason +
           QStringLiteral(" Your changes remain on this Mac.");
}

} // namespace

void AppStore::setSyncing(bool syncing, const QString &status) {
    publish(m_syncing, syncing, &AppStore::syncingChanged);
    publish(m_syncStatus, status, &AppStore::syncStatusChanged);
}

void AppStore::scheduleSync() {
    // An edit during a run needs no pause of its own: the end of the run looks at the queue.
    if (!m_account || !m_libraryWritable || m_syncing)
        return;
    m_syncTask.request_stop();
    m_syncTask = std::stop_source();
    start(*this, [this, stop = m_syncTask.get_token()] { return syncAfterPause(stop); });
}

void AppStore::cancelSync() {
    m_syncRun = Identifier::make();
    m_syncTask.request_stop();
    setSyncing(false, signedOut);
}

Task<void> AppStore::syncAfterPause(std::stop_token stop) {
    auto pause = m_platform.clock.sleep(pauseAfterEdit, stop);
    co_await pause;
    auto run = syncOnce(stop);
    co_await run;
}

Task<void> AppStore::syncLibrary() {
    return syncOnce({});
}

void AppStore::beginSync() {
    start(*this, [this] { return syncLibrary(); });
}

Task<void> AppStore::syncOnce(std::stop_token stop) {
    if (!m_account || !m_libraryWritable || m_syncing)
        co_return;
    const Marker generation(m_generation);
    const QString key = libraryKey();
    const API service = api();
    m_syncRun = Identifier::make();
    const Marker run(m_syncRun);
    setSyncing(true, running);
    const auto pending = pendingOf(m_library);
    const auto batch = pending.first(std::min(batchSize, pending.size()));
    const auto counts = [&] { return generation.holds() && libraryKey() == key && run.holds(); };
    try {
        Merge merge;
        merge.sent = batch;
        auto exchange = service.syncLibrary(batch, stop);
        merge.reply = co_await exchange;
        merge.encoder = m_libraryEncoder;
        bool current = false;
        for (int turn = 0; turn < mergesAside && !current; ++turn) {
            const LocalLibrary before = m_library;
            merge.library = before;
            auto merging = onWorker(
                [merge = std::move(merge)]() mutable { return carriedOut(std::move(merge)); });
            merge = co_await merging;
            // Whoever voided the run owns the state now; the batch is still in its library's file.
            if (!counts())
                co_return;
            current = isUntouched(m_library, before);
        }
        // No wait from here to the end of the write, so that no edit can come between.
        if (!current) {
            merge.library = m_library;
            merge = carriedOut(std::move(merge));
        }
        if (merge.isNew) {
            std::swap(m_library, merge.library);
            std::swap(m_libraryEncoder, merge.encoder);
            Q_EMIT libraryChanged();
        }
        followReply(merge.reply);
        if (merge.isNew || !m_libraryOnDisk)
            writeLibrary(key);
        const bool conflicts = merge.reply.conflicts && !merge.reply.conflicts->isEmpty();
        setSyncing(false, conflicts ? syncedWithConflicts : synced);
        letGoOnWorker(std::move(merge));
        if (!m_library.sync->pending.isEmpty())
            scheduleSync();
    } catch (...) {
        if (counts())
            setSyncing(false, notSynced(describe(std::current_exception())));
    }
}

void AppStore::followReply(const LibraryReply &reply) {
    // An answer or a pin in flight holds on to the conversation as it is.
    if (m_chatting || m_pinning)
        return;

    Conversation open = m_chat;
    for (const auto &conflict : reply.conflicts.value_or(QList<LibraryConflict>())) {
        if (conflict.originalKey != open.id.text)
            continue;
        // The user goes on with the copy that holds what they wrote.
        open.id = Identifier::parse(conflict.preservedKey).value_or(open.id);
        break;
    }
    for (const auto &conversation : std::as_const(m_library.conversations)) {
        if (conversation.id != open.id)
            continue;
        open = conversation;
        m_chatBaseVersion = LibrarySync::baseVersion(open.id, m_library).value_or(0);
        break;
    }
    setChat(open);
}
