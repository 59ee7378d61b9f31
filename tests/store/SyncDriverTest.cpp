#include "storage/LibraryDisk.h"
#include "sync/LibrarySync.h"
#include "tests/storage/SampleLibrary.h"
#include "tests/store/StoreTest.h"
#include "tests/support/BusyWorkers.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using LibrarySync::CardEdit;

namespace {

const auto library = u"/v1/library"_s;
const auto wall = u"/v1/wall"_s;
const auto synced = u"Synced with your account."_s;
const auto signedOut = u"Sign in to sync across devices."_s;
const auto notSynced =
    u"Not synced: This took too long and was stopped; please try again. Your changes remain on "
    "this Mac."_s;

class SyncDriver : public StoreTest {
protected:
    void SetUp() override {
        StoreAccess::setAccount(store, u"user"_s);
        StoreAccess::library(store).sync.emplace();
    }

    void edit(int number) {
        LibrarySync::enqueueCard(SampleLibrary::card(number), CardEdit::saved,
                                 StoreAccess::library(store));
        store.persist();
        settleEventLoop();
    }

    void queue(int count) {
        for (int number = 0; number < count; ++number)
            LibrarySync::enqueueCard(SampleLibrary::card(number), CardEdit::saved,
                                     StoreAccess::library(store));
    }

    void advance(std::chrono::milliseconds duration) {
        settleEventLoop();
        system.clock.advance(duration);
        settleEventLoop();
    }

    void beginRun() {
        store.beginSync();
        waitForRequest();
    }

    void waitForRequest() {
        ASSERT_TRUE(eventually([&] { return system.transport.waiting(library) == 1; }));
    }

    LibraryUpload upload() const {
        return Json::decode<LibraryUpload>(*system.transport.requests().back().body);
    }

    /// Takes every change of the last request.
    LibraryReply accepting() const {
        LibraryReply reply;
        reply.accepted.emplace();
        const auto sent = upload();
        for (const auto &change : sent.changes) {
            reply.accepted->append(change.opId.text);
            reply.records.append(
                {change.kind, change.key, 1, change.deleted, change.card, change.conversation});
        }
        return reply;
    }

    void answer(const LibraryReply &reply) {
        system.transport.answer(library, 200, Json::encode(reply));
        ASSERT_TRUE(eventually([&] { return system.transport.waiting(library) == 0; }));
        settleEventLoop();
    }

    void answerAndFinish(const LibraryReply &reply) {
        answer(reply);
        ASSERT_TRUE(eventually([&] { return !store.isSyncing(); }));
    }

    const QList<LibraryChange> &pending() const { return store.library().sync->pending; }

    LocalLibrary onDisk(const QString &key) { return LibraryDisk::load(system.files, key); }
};

} // namespace

TEST_F(SyncDriver, aRunStartsOnceTheEditsHaveRested) {
    edit(1);
    advance(500ms);
    edit(2);
    advance(699ms);
    EXPECT_EQ(requests(), 0);
    EXPECT_EQ(store.syncStatus(), signedOut);
    advance(1ms);
    waitForRequest();
    EXPECT_EQ(store.syncStatus(), u"Syncing…"_s);
    EXPECT_EQ(upload().changes.size(), 2);
    answerAndFinish(accepting());
    EXPECT_EQ(store.syncStatus(), synced);
    EXPECT_TRUE(pending().isEmpty());
    EXPECT_EQ(onDisk(store.libraryKey()), store.library());
    advance(10s);
    EXPECT_EQ(requests(), 1);
}

TEST_F(SyncDriver, anEditDuringARunGoesWithTheNext) {
    edit(1);
    advance(700ms);
    waitForRequest();
    const auto reply = accepting();
    edit(1);
    edit(2);
    advance(10s);
    EXPECT_EQ(requests(), 1);
    answerAndFinish(reply);
    EXPECT_EQ(pending().size(), 2);
    EXPECT_EQ(pending().first().baseVersion, 1);
    advance(700ms);
    waitForRequest();
    EXPECT_EQ(upload().changes, pending());
    answerAndFinish(accepting());
}

TEST_F(SyncDriver, anEditWhileTheReplyIsBeingMergedStays) {
    constexpr int many = 20;
    edit(0);
    beginRun();
    std::optional<BusyWorkers> workers(std::in_place);
    answer(accepting());
    // Between any two things that a worker does for the run.
    int edits = 0;
    while (store.isSyncing() && edits < many) {
        edit(++edits);
        workers.reset();
        workers.emplace();
        settleEventLoop();
    }
    EXPECT_FALSE(store.isSyncing()) << "as long as there are edits, a run does not end";
    ASSERT_EQ(pending().size(), edits);
    EXPECT_EQ(pending().last().key, SampleLibrary::card(edits).key);
    EXPECT_EQ(store.library().saved.size(), edits + 1);
    EXPECT_EQ(onDisk(store.libraryKey()), store.library());
}

TEST_F(SyncDriver, aReplyThatBringsNothingNewIsNeitherWrittenNorTold) {
    edit(1);
    beginRun();
    auto reply = accepting();
    answerAndFinish(reply);
    const QSignalSpy told(&store, &AppStore::libraryChanged);
    const auto writes = system.files.written().size();
    beginRun();
    answerAndFinish(reply);
    EXPECT_EQ(store.syncStatus(), synced);
    EXPECT_EQ(system.files.written().size(), writes);
    EXPECT_TRUE(told.isEmpty());

    // A version is news, too: the next edit builds on it.
    reply.records.first().version = 2;
    beginRun();
    answerAndFinish(reply);
    EXPECT_EQ(onDisk(store.libraryKey()).sync->versions.value(reply.records.first().identity()), 2);
}

TEST_F(SyncDriver, aRequestCarriesFiftyChangesAndTheRestFollows) {
    struct Row {
        int queued;
        int runs;
    };
    for (const auto &row : {Row{0, 1}, Row{50, 1}, Row{51, 2}, Row{101, 3}}) {
        StoreAccess::library(store).sync.emplace();
        queue(row.queued);
        const auto before = requests();
        beginRun();
        for (int run = 1; run < row.runs; ++run) {
            EXPECT_EQ(upload().changes.size(), 50);
            answerAndFinish(accepting());
            advance(700ms);
            waitForRequest();
        }
        EXPECT_EQ(upload().changes.size(), row.queued - 50 * (row.runs - 1));
        answerAndFinish(accepting());
        advance(10s);
        EXPECT_EQ(requests(), before + row.runs);
    }
}

TEST_F(SyncDriver, nothingLargerThanAMillionBytesIsSent) {
    auto &state = *StoreAccess::library(store).sync;
    auto card = SampleLibrary::card(1);
    card.summary.clear();
    LibrarySync::enqueueCard(card, CardEdit::saved, StoreAccess::library(store));
    const auto frame = Json::encode(LibraryUpload{state.pending}).size();
    const auto fill = [&](qsizetype size) {
        state.pending.first().card->summary = QString(size - frame, u'x');
    };
    fill(1'000'000);
    beginRun();
    EXPECT_EQ(system.transport.requests().back().body->size(), 1'000'000);
    system.transport.fail(library, URLError::Code::timedOut);
    ASSERT_TRUE(eventually([&] { return !store.isSyncing(); }));
    EXPECT_EQ(store.syncStatus(), notSynced);

    fill(1'000'001);
    store.beginSync();
    ASSERT_TRUE(eventually([&] { return store.syncStatus() != notSynced && !store.isSyncing(); }));
    EXPECT_EQ(requests(), 1);
    EXPECT_EQ(store.syncStatus(),
              u"Not synced: This upload is too large. Your changes remain saved on this Mac. Your "
              "changes remain on this Mac."_s);
    EXPECT_EQ(pending().size(), 1);
}

TEST_F(SyncDriver, aGuestAndAPausedLibraryAreLeftAlone) {
    StoreAccess::setAccount(store, std::nullopt);
    edit(1);
    advance(10s);
    await(store.syncLibrary());
    EXPECT_EQ(store.syncStatus(), signedOut);

    system.files.contents()[LibraryDisk::file(system.files, store.libraryKey())] = "broken";
    store.loadLibrary();
    StoreAccess::setAccount(store, u"user"_s);
    edit(2);
    advance(10s);
    await(store.syncLibrary());
    EXPECT_EQ(store.syncStatus(), signedOut);
    EXPECT_EQ(requests(), 0);
}

TEST_F(SyncDriver, aFailureKeepsTheQueueAndIsTriedAgainWithTheNextEditOnly) {
    edit(1);
    const auto queued = pending();
    beginRun();
    system.transport.answer(library, 503, R"({"error":"down_for_now"})");
    ASSERT_TRUE(eventually([&] { return !store.isSyncing(); }));
    EXPECT_EQ(store.syncStatus(), u"Not synced: down for now Your changes remain on this Mac."_s);
    EXPECT_EQ(pending(), queued);
    // The pause of the edit ends in a run of its own.
    advance(700ms);
    waitForRequest();
    EXPECT_EQ(upload().changes, queued);
    system.transport.answer(library, 200, "[]");
    ASSERT_TRUE(eventually([&] { return !store.isSyncing(); }));
    EXPECT_TRUE(store.syncStatus().startsWith(u"Not synced: The service answered in a form"_s));
    advance(60s);
    EXPECT_EQ(requests(), 2);
}

TEST_F(SyncDriver, aReplyThatCannotBeWrittenIsInMemoryAndTold) {
    edit(1);
    beginRun();
    const auto reply = accepting();
    system.files.failWrites(FileError::Code::noSpace);
    answerAndFinish(reply);
    EXPECT_EQ(store.syncStatus(), u"Not synced: The disk is full; free some space and try again. "
                                  "Your changes remain on this Mac."_s);
    EXPECT_TRUE(pending().isEmpty());
    EXPECT_EQ(onDisk(store.libraryKey()).sync->pending.size(), 1);
    EXPECT_EQ(store.notice(), std::nullopt);
    // The next run makes up for it, though its reply brings nothing new.
    advance(700ms);
    waitForRequest();
    system.files.failWrites(std::nullopt);
    answerAndFinish(reply);
    EXPECT_EQ(onDisk(store.libraryKey()), store.library());
}

TEST_F(SyncDriver, aRunThatWasVoidedTouchesNothing) {
    using Change = std::function<void()>;
    const std::vector<Change> changes{
        [&] { StoreAccess::cancelSync(store); },
        [&] { store.replaceGeneration(); },
        [&] { StoreAccess::setAccount(store, u"somebody else"_s); },
    };
    for (const auto &change : changes) {
        for (const bool succeeds : {true, false}) {
            StoreAccess::setAccount(store, u"user"_s);
            edit(1);
            const auto key = store.libraryKey();
            beginRun();
            const auto reply = accepting();
            change();
            const auto before = store.library();
            const auto status = store.syncStatus();
            const auto file = onDisk(key);
            const bool syncing = store.isSyncing();
            if (succeeds)
                answer(reply);
            else
                system.transport.fail(library, URLError::Code::timedOut);
            ASSERT_TRUE(eventually([&] { return system.transport.waiting(library) == 0; }));
            settleEventLoop();
            EXPECT_EQ(store.library(), before);
            EXPECT_EQ(onDisk(key), file);
            EXPECT_EQ(store.syncStatus(), status);
            EXPECT_EQ(store.isSyncing(), syncing);
            StoreAccess::cancelSync(store);
        }
    }
}

TEST_F(SyncDriver, anOlderReplyDoesNotEndANewerRun) {
    edit(1);
    beginRun();
    const auto older = accepting();
    StoreAccess::cancelSync(store);
    store.beginSync();
    ASSERT_TRUE(eventually([&] { return system.transport.waiting(library) == 2; }));
    system.transport.answer(library, 200, Json::encode(older));
    ASSERT_TRUE(eventually([&] { return system.transport.waiting(library) == 1; }));
    settleEventLoop();
    EXPECT_TRUE(store.isSyncing());
    EXPECT_EQ(pending().size(), 1);
    answerAndFinish(accepting());
    EXPECT_EQ(store.syncStatus(), synced);
}

TEST_F(SyncDriver, endingSynchronisationStopsThePauseAndTheRequestThatCameOfIt) {
    edit(1);
    StoreAccess::cancelSync(store);
    advance(10s);
    EXPECT_EQ(requests(), 0);
    edit(2);
    advance(700ms);
    waitForRequest();
    StoreAccess::cancelSync(store);
    EXPECT_TRUE(eventually([&] { return system.transport.waiting(library) == 0; }));
    EXPECT_EQ(store.syncStatus(), signedOut);
    EXPECT_FALSE(store.isSyncing());
}

TEST_F(SyncDriver, theOpenConversationBecomesThePreservedCopy) {
    enum class Busy { no, answering, pinning };
    for (const auto busy : {Busy::no, Busy::answering, Busy::pinning}) {
        for (const bool usable : {true, false}) {
            auto &chat = StoreAccess::chat(store);
            chat = SampleLibrary::conversation(1);
            LibrarySync::enqueueConversation(chat, 3, StoreAccess::library(store));
            beginRun();
            auto reply = accepting();
            auto copy = chat;
            copy.id = Identifier::make();
            copy.title = u"as the service kept it"_s;
            auto winner = chat;
            winner.title = u"of another device"_s;
            reply.records = {{u"conversation"_s, winner.id.text, 4, false, {}, winner},
                             {u"conversation"_s, copy.id.text, 7, false, {}, copy}};
            reply.conflicts = {{Identifier::make().text, Identifier::make().text},
                               {chat.id.text, usable ? copy.id.text : u"unusable"_s}};
            StoreAccess::setBusy(store, busy == Busy::answering, busy == Busy::pinning);
            const auto before = chat;
            answerAndFinish(reply);
            EXPECT_EQ(store.syncStatus(), u"Synced. Both versions of a conversation were kept."_s);
            EXPECT_EQ(store.library().conversations.size(), 2);
            if (busy == Busy::no) {
                EXPECT_EQ(store.chat(), usable ? copy : winner);
                EXPECT_EQ(StoreAccess::chatBaseVersion(store), usable ? 7 : 4);
            } else {
                EXPECT_EQ(store.chat(), before);
            }
            StoreAccess::setBusy(store, false, false);
        }
    }

    // No member, no conflict.
    beginRun();
    LibraryReply quiet;
    quiet.conflicts.emplace();
    answerAndFinish(quiet);
    EXPECT_EQ(store.syncStatus(), synced);
}

TEST_F(SyncDriver, loadingAnAccountsLibraryStartsARunAndFetchesTheWall) {
    store.loadLibrary();
    ASSERT_TRUE(eventually([&] { return system.transport.waiting(wall) == 1; }));
    system.transport.answer(wall, 200, R"({"items":[]})");
    advance(700ms);
    waitForRequest();
    EXPECT_TRUE(upload().changes.isEmpty());
    const auto &sent = system.transport.requests().back();
    EXPECT_EQ(sent.method, "POST");
    EXPECT_EQ(sent.url.query(), QString());
    answerAndFinish({});
}
