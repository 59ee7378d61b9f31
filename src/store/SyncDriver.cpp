// When the queued changes go to the service, and what becomes of its reply.
#include "platform/Clock.h"
#include "platform/Start.h"
#include "storage/LibraryDisk.h"
#include "store/AppStore.h"
#include "sync/LibrarySync.h"

namespace {

constexpr std::chrono::milliseconds pauseAfterEdit(700);
constexpr qsizetype batchSize = 50;

const QString signedOut = QStringLiteral("Sign in to sync across devices.");
const QString running = QStringLiteral("Syncing…");
const QString synced = QStringLiteral("Synced with your account.");
const QString syncedWithConflicts =
    QStringLiteral("Synced. Both versions of a conversation were kept.");

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
    const auto batch =
        m_library.sync
            ? m_library.sync->pending.first(std::min(batchSize, m_library.sync->pending.size()))
            : QList<LibraryChange>();
    const auto counts = [&] { return generation.holds() && libraryKey() == key && run.holds(); };
    try {
        auto exchange = service.syncLibrary(batch, stop);
        const LibraryReply reply = co_await exchange;
        // Whoever voided the run owns the state now; the batch is still in its library's file.
        if (!counts())
            co_return;
        takeReply(reply, batch);
        LibraryDisk::save(m_platform.files, m_libraryEncoder, m_library, key);
        const bool conflicts = reply.conflicts && !reply.conflicts->isEmpty();
        setSyncing(false, conflicts ? syncedWithConflicts : synced);
        if (!m_library.sync->pending.isEmpty())
            scheduleSync();
    } catch (...) {
        if (counts())
            setSyncing(false, notSynced(describe(std::current_exception())));
    }
}

void AppStore::takeReply(const LibraryReply &reply, const QList<LibraryChange> &batch) {
    LibrarySync::reconcile(reply, batch, m_library);
    Q_EMIT libraryChanged();
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
        m_chatBaseVersion = knownVersion(open.id).value_or(0);
        break;
    }
    setChat(open);
}
