#include "platform/SystemFiles.h"
#include "storage/LibraryDisk.h"
#include "sync/LibrarySync.h"
#include "tests/storage/TemporaryHome.h"
#include "tests/store/SampleCatalogue.h"
#include "tests/store/StoreTest.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

const auto unreadable = u"Could not read the library saved on this Mac. Existing files have been "
                        "kept; saving is disabled until they can be recovered."_s;
const auto paused = u"Saving is paused to protect the existing library file."_s;
const auto guestStatus = u"Guest library stays on this Mac."_s;

const QByteArray unsynchronised =
    R"({"saved":[{"id":"1","key":"foible:1","archive":"foible","title":"A bridge","summary":"",)"
    R"("category":"","era":"","locale":"en"}],"conversations":[]})";

class LibrarySession : public StoreTest {
protected:
    QString path(const std::optional<QString> &user) {
        return LibraryDisk::file(system.files, LibraryDisk::key(store.baseString(), user));
    }

    CaseCard toggleSomething() {
        CaseCard card;
        card.key = u"foible:9"_s;
        StoreAccess::library(store).saved.append(card);
        store.persist();
        return card;
    }
};

} // namespace

TEST_F(LibrarySession, aGuestLoadLeavesTheFileAloneAndAnAccountLoadRewritesIt) {
    EXPECT_EQ(store.syncStatus(), u"Sign in to sync across devices."_s);
    for (const auto &user : {std::optional<QString>(), std::optional(u"user"_s)})
        system.files.contents()[path(user)] = unsynchronised;

    QSignalSpy changed(&store, &AppStore::libraryChanged);
    store.loadLibrary();
    EXPECT_EQ(changed.count(), 1);
    EXPECT_EQ(store.library().saved.size(), 1);
    EXPECT_FALSE(store.library().sync);
    EXPECT_EQ(store.syncStatus(), guestStatus);
    EXPECT_TRUE(system.files.written().isEmpty());
    toggleSomething();
    EXPECT_EQ(system.files.written(), QList<QString>{path(std::nullopt)});
    EXPECT_FALSE(system.files.contents()[path(std::nullopt)].contains("sync"));

    StoreAccess::setAccount(store, u"user"_s);
    store.loadLibrary();
    EXPECT_EQ(system.files.written().last(), path(u"user"_s));
    EXPECT_EQ(store.library().saved.size(), 1);
    ASSERT_TRUE(store.library().sync);
    EXPECT_EQ(store.library().sync->pending.size(), 1);
    EXPECT_EQ(LibraryDisk::load(system.files, store.libraryKey()), store.library());
    EXPECT_EQ(store.syncStatus(), guestStatus);

    // Once more: rewritten, though nothing is queued anew.
    const auto queued = store.library().sync->pending;
    const auto writes = system.files.written().size();
    store.loadLibrary();
    EXPECT_EQ(store.library().sync->pending, queued);
    EXPECT_EQ(system.files.written().size(), writes + 1);

    StoreAccess::setAccount(store, std::nullopt);
    store.loadLibrary();
    EXPECT_EQ(store.library().saved.size(), 2);
    EXPECT_EQ(store.notice(), std::nullopt);
}

TEST_F(LibrarySession, aLoadClearsWhatBelongedToTheAccountBefore) {
    for (const bool readable : {true, false}) {
        system.files.contents()[path(std::nullopt)] = readable ? unsynchronised : "broken";
        StoreAccess::fillAccountFields(store);
        QSignalSpy quotaChanged(&store, &AppStore::quotaChanged);
        QSignalSpy requestedChanged(&store, &AppStore::requestedCasesChanged);
        store.loadLibrary();
        EXPECT_TRUE(store.wall().isEmpty());
        EXPECT_FALSE(store.isWallLoading() || store.isWallOffline() || store.wallError());
        EXPECT_TRUE(store.wallMutations().isEmpty());
        EXPECT_FALSE(store.isPinning() || store.quota() || store.isOpeningMembership() ||
                     store.isRefreshingAccount());
        EXPECT_TRUE(store.requestedCases().isEmpty() && store.requestingCases().isEmpty());
        EXPECT_EQ(quotaChanged.count(), 1);
        EXPECT_EQ(requestedChanged.count(), 1);
        store.loadLibrary();
        EXPECT_EQ(quotaChanged.count(), 1);
    }
}

TEST_F(LibrarySession, anUnreadableFilePausesSavingUntilALoadSucceeds) {
    struct Row {
        QByteArray content;
        std::optional<FileError::Code> failure;
    };
    for (const auto &user : {std::optional<QString>(), std::optional(u"user"_s)}) {
        StoreAccess::setAccount(store, user);
        for (const auto &row :
             {Row{"", {}}, Row{"{\"conversations\":[]}", {}}, Row{QByteArray(100'000, '['), {}},
              Row{unsynchronised, FileError::Code::deviceFailed}}) {
            store.setNotice(std::nullopt);
            system.files.failReads(row.failure);
            system.files.contents()[path(user)] = row.content;
            const auto writes = system.files.written().size();
            const auto status = store.syncStatus();
            store.loadLibrary();
            EXPECT_EQ(store.notice(), unreadable);
            EXPECT_EQ(store.library(), LocalLibrary());
            EXPECT_EQ(store.syncStatus(), status);
            for (int mutation = 1; mutation <= 2; ++mutation) {
                store.setNotice(std::nullopt);
                toggleSomething();
                EXPECT_EQ(store.notice(), paused);
                EXPECT_EQ(store.library().saved.size(), mutation);
            }
            EXPECT_EQ(system.files.written().size(), writes);
            EXPECT_EQ(system.files.contents()[path(user)], row.content);

            store.setNotice(std::nullopt);
            system.files.failReads(std::nullopt);
            system.files.contents()[path(user)] = unsynchronised;
            store.loadLibrary();
            EXPECT_EQ(store.notice(), std::nullopt);
            EXPECT_EQ(store.library().saved.size(), 1);
            toggleSomething();
            EXPECT_EQ(LibraryDisk::load(system.files, store.libraryKey()).saved.size(), 2);
        }
    }
}

TEST_F(LibrarySession, aLibraryThatAnotherProcessHasIsShownButNotSaved) {
    for (const auto &user : {std::optional<QString>(), std::optional(u"user"_s)}) {
        StoreAccess::setAccount(store, user);
        system.files.contents()[path(user)] = unsynchronised;
        system.files.holdLocks(true);
        store.loadLibrary();
        EXPECT_TRUE(store.noticeText().startsWith(u"Another running copy"_s));
        EXPECT_EQ(store.library().saved.size(), 1);
        toggleSomething();
        EXPECT_EQ(store.notice(), paused);
        EXPECT_EQ(system.files.contents()[path(user)], unsynchronised);
        system.files.holdLocks(false);
        store.loadLibrary();
        toggleSomething();
        EXPECT_EQ(LibraryDisk::load(system.files, store.libraryKey()).saved.size(), 2);
    }
}

TEST_F(LibrarySession, aFailedSaveTellsWhyAndTheNextOneTriesEverythingAgain) {
    store.loadLibrary();
    system.files.failWrites(FileError::Code::noSpace);
    toggleSomething();
    EXPECT_EQ(store.notice(), u"Could not save changes on this Mac. The disk is full; free some "
                              "space and try again."_s);
    EXPECT_TRUE(system.files.written().isEmpty());

    system.files.failWrites(std::nullopt);
    system.files.failPrivacy(FileError::Code::notPermitted);
    toggleSomething();
    EXPECT_TRUE(store.noticeText().startsWith(
        u"Could not save changes on this Mac. This program is not allowed"_s));
    EXPECT_EQ(system.files.written().size(), 1);

    system.files.failPrivacy(std::nullopt);
    store.setNotice(std::nullopt);
    toggleSomething();
    EXPECT_EQ(store.notice(), std::nullopt);
    EXPECT_EQ(LibraryDisk::load(system.files, store.libraryKey()).saved.size(), 3);
}

TEST_F(LibrarySession, aLibraryThatCannotBeSavedOnLoadIsInMemoryAllTheSame) {
    system.files.contents()[path(u"user"_s)] = unsynchronised;
    StoreAccess::setAccount(store, u"user"_s);
    system.files.failWrites(FileError::Code::readOnly);
    store.loadLibrary();
    EXPECT_EQ(store.library().saved.size(), 1);
    EXPECT_TRUE(store.noticeText().startsWith(u"Could not save changes on this Mac. "_s));
    system.files.failWrites(std::nullopt);
    store.persist();
    EXPECT_EQ(LibraryDisk::load(system.files, store.libraryKey()), store.library());
}

TEST_F(LibrarySession, connectBringsInTheGuestLibraryWhetherOrNotTheServiceAnswers) {
    system.files.contents()[path(std::nullopt)] = unsynchronised;
    for (const bool answered : {true, false}) {
        store.beginConnect();
        ASSERT_TRUE(eventually([&] { return system.transport.waiting(u"/v1/archives"_s) == 1; }));
        EXPECT_EQ(store.library().saved.size(), 1) << "the first time, before anything else";
        StoreAccess::library(store) = {};
        if (answered) {
            system.transport.answer(u"/v1/health"_s, 200, SampleCatalogue::healthBody());
            system.transport.answer(u"/v1/archives"_s, 200, SampleCatalogue::archivesBody());
        } else {
            system.transport.fail(u"/v1/health"_s, URLError::Code::timedOut);
        }
        ASSERT_TRUE(eventually([&] { return !store.isConnecting(); }));
        EXPECT_EQ(store.library().saved.size(), 1);
        EXPECT_EQ(store.syncStatus(), guestStatus);
        EXPECT_EQ(store.notice().has_value(), !answered);
    }

    // The failure to load comes last and is the one that is told.
    system.files.contents()[path(std::nullopt)] = "broken";
    store.beginConnect();
    ASSERT_TRUE(eventually([&] { return system.transport.waiting(u"/v1/archives"_s) == 1; }));
    system.transport.fail(u"/v1/archives"_s, URLError::Code::timedOut);
    ASSERT_TRUE(eventually([&] { return !store.isConnecting(); }));
    EXPECT_EQ(store.notice(), unreadable);
}

TEST_F(LibrarySession, aConnectThatWasOutlivedLoadsNothing) {
    system.files.contents()[path(std::nullopt)] = unsynchronised;
    for (const bool answered : {true, false}) {
        store.beginConnect();
        ASSERT_TRUE(eventually([&] { return system.transport.waiting(u"/v1/archives"_s) == 1; }));
        StoreAccess::library(store) = {};
        store.replaceGeneration();
        if (answered) {
            system.transport.answer(u"/v1/health"_s, 200, SampleCatalogue::healthBody());
            system.transport.answer(u"/v1/archives"_s, 200, SampleCatalogue::archivesBody());
        } else {
            system.transport.fail(u"/v1/health"_s, URLError::Code::timedOut);
        }
        ASSERT_TRUE(eventually([&] { return system.transport.waiting(u"/v1/archives"_s) == 0; }));
        settleEventLoop();
        EXPECT_TRUE(store.library().saved.isEmpty());
        EXPECT_TRUE(store.isConnecting());
    }
}

TEST_F(LibrarySession, onlyAnAccountsRequestsCarryTheToken) {
    system.credentials.secrets()[{u"chat.quillmere.mac.local"_s, store.baseString()}] = "token";
    EXPECT_EQ(store.api().token(), std::nullopt);
    EXPECT_TRUE(system.credentials.calls().isEmpty());
    StoreAccess::setAccount(store, u"user"_s);
    EXPECT_EQ(store.api().token(), u"token"_s);
    system.credentials.secrets().clear();
    EXPECT_EQ(store.api().token(), std::nullopt);
}

TEST(LibrarySessionOnDisk, aBrokenFileOfAnySizeDoesNotTakeTheStoreDown) {
    const TemporaryHome home;
    TestPlatform<FakeTransport, SystemFiles> system;
    AppStore store(system.platform());
    const auto path = LibraryDisk::file(system.files, store.libraryKey());
    {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("{\"saved\":[");
        ASSERT_TRUE(file.resize(200'000'000));
    }
    store.loadLibrary();
    EXPECT_EQ(store.notice(), unreadable);
    store.persist();
    EXPECT_EQ(store.notice(), paused);
    EXPECT_EQ(QFileInfo(path).size(), 200'000'000);
    store.newChat();
    EXPECT_EQ(store.destination(), u"chat"_s);
}
