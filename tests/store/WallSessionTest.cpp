#include "platform/Start.h"
#include "records/ArchiveStyle.h"
#include "storage/ReadingCache.h"
#include "tests/storage/SampleLibrary.h"
#include "tests/store/StoreTest.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const auto wall = u"/v1/wall"_s;
const auto wallCase = u"/v1/wall/case"_s;
const auto wallChat = u"/v1/wall/chat"_s;
const auto loadFailed = u"This could not be loaded. Please try again."_s;

CaseCard foible(int number) {
    auto card = SampleLibrary::card(number);
    card.archive = u"foible"_s;
    card.id = QString::number(number);
    card.key = u"foible:"_s + card.id;
    return card;
}

WallItem pinned(const CaseCard &card, const QString &id = u"item"_s) {
    WallItem item;
    item.id = id;
    item.kind = u"save"_s;
    item.site = ArchiveStyle::domain(card.archive);
    item.caseId = card.id;
    item.createdAt = 5;
    return item;
}

QByteArray body(const QList<WallItem> &items) {
    return Json::encode(Items<WallItem>{items});
}

class WallSession : public StoreTest {
protected:
    void SetUp() override { StoreAccess::setAccount(store, u"user"_s); }

    void expectRequest(const QString &path, qsizetype count = 1) {
        ASSERT_TRUE(eventually([&] { return system.transport.waiting(path) == count; }))
            << qPrintable(path);
    }

    void answer(const QString &path, const QByteArray &text, int status = 200) {
        expectRequest(path);
        system.transport.answer(path, status, text);
        settleEventLoop();
    }

    void refresh(const QList<WallItem> &items) {
        store.beginRefreshWall();
        answer(wall, body(items));
        ASSERT_TRUE(eventually([&] { return !store.isWallLoading(); }));
    }

    std::optional<QList<WallItem>> copy() {
        return ReadingCache::get<QList<WallItem>>(system.files, store.libraryKey(), u"wall"_s);
    }

    void open(const QList<CaseCard> &cited, const std::optional<QString> &wallID) {
        auto &chat = StoreAccess::chat(store);
        chat = Conversation();
        chat.title = u"About bridges"_s;
        chat.wallID = wallID;
        chat.messages = {ChatMessage::make(ChatMessage::user, u"Why do bridges fall?"_s),
                         ChatMessage::make(ChatMessage::assistant, u"They resonate."_s, cited)};
    }

    void finishPin() {
        ASSERT_TRUE(eventually([&] { return !store.isPinning(); }));
    }
};

} // namespace

TEST_F(WallSession, aRefreshShowsTheServicesListAndOutOfReachItsCopy) {
    refresh({pinned(foible(1))});
    EXPECT_TRUE(store.isOnWall(foible(1)));
    EXPECT_FALSE(store.isOnWall(foible(2)));
    EXPECT_EQ(copy(), store.wall());

    const auto fail = [&](std::optional<int> status) {
        store.beginRefreshWall();
        expectRequest(wall);
        EXPECT_TRUE(store.isWallLoading());
        if (status)
            system.transport.answer(wall, *status, R"({"error":"broken"})");
        else
            system.transport.fail(wall, URLError::Code::cannotConnectToHost);
        ASSERT_TRUE(eventually([&] { return !store.isWallLoading(); }));
    };
    const auto known = store.wall();
    fail(500);
    EXPECT_EQ(store.wallError(), loadFailed);
    EXPECT_FALSE(store.isWallOffline());
    EXPECT_EQ(store.wall(), known);

    // As after a restart without a network.
    StoreAccess::setWall(store, {});
    fail({});
    EXPECT_EQ(store.wall(), known);
    EXPECT_TRUE(store.isWallOffline());
    EXPECT_EQ(store.wallError(), std::nullopt);
    fail(401);
    EXPECT_TRUE(store.isWallOffline());
    EXPECT_EQ(store.wallError(), loadFailed);
    refresh({});
    EXPECT_FALSE(store.isWallOffline() || store.wallError());

    StoreAccess::setAccount(store, u"without a copy"_s);
    fail({});
    EXPECT_EQ(store.wallError(), loadFailed);
    EXPECT_FALSE(store.isWallOffline());
}

TEST_F(WallSession, aGuestHasNoWall) {
    refresh({pinned(foible(1))});
    const auto before = requests();
    StoreAccess::setAccount(store, std::nullopt);
    await(store.refreshWall());
    EXPECT_TRUE(store.wall().isEmpty());
    await(store.toggleWallCase(foible(1)));
    EXPECT_EQ(store.notice(), u"Your wall is kept with your account. Sign in to save to it."_s);
    EXPECT_TRUE(store.wallMutations().isEmpty());
    open({}, {});
    await(store.pinChat());
    EXPECT_EQ(requests(), before);
}

TEST_F(WallSession, aToggleShowsAtOnceAndTheServicesListFollows) {
    const auto card = foible(1);
    store.beginToggleWallCase(card);
    expectRequest(wallCase);
    EXPECT_EQ(lastBody(), (QJsonObject{{u"archive"_s, u"foible"_s}, {u"id"_s, u"1"_s}}));
    EXPECT_EQ(store.wallMutations(), QSet<QString>{card.key});

    // The same case waits, another one does not.
    await(store.toggleWallCase(card));
    store.beginToggleWallCase(foible(2));
    expectRequest(wallCase, 2);
    system.transport.answer(wallCase, 200, R"({"on":true})");
    system.transport.answer(wallCase, 200, R"({"on":false})");
    ASSERT_TRUE(eventually([&] { return system.clock.sleepers() == 2; }));
    ASSERT_EQ(store.wallCount(), 1);
    const auto local = store.wall().first();
    EXPECT_EQ(local.id, u"pending:foible:1"_s);
    EXPECT_EQ(local.kind, u"save"_s);
    EXPECT_EQ(local.title, card.title);
    EXPECT_EQ(local.createdAt, system.clock.now().toMSecsSinceEpoch());
    EXPECT_FALSE(local.body || local.url || local.card);
    await(store.removeWallItem(local));

    system.clock.advance(899ms);
    settleEventLoop();
    EXPECT_EQ(requests(), 2);
    system.clock.advance(1ms);
    expectRequest(wall, 2);
    for (int reply = 0; reply < 2; ++reply)
        system.transport.answer(wall, 200, body({pinned(card)}));
    ASSERT_TRUE(eventually([&] { return store.wallMutations().isEmpty(); }));
    EXPECT_EQ(store.wall(), QList<WallItem>{pinned(card)});
}

TEST_F(WallSession, aToggleFollowsTheServicesAnswerWhateverIsShown) {
    struct Row {
        bool shown;
        bool on;
        qsizetype count;
    };
    for (const auto &row :
         {Row{true, true, 1}, Row{true, false, 0}, Row{false, true, 1}, Row{false, false, 0}}) {
        StoreAccess::setWall(store, row.shown ? QList{pinned(foible(1))} : QList<WallItem>());
        store.beginToggleWallCase(foible(1));
        answer(wallCase, row.on ? R"({"on":true})" : R"({"on":false})");
        ASSERT_TRUE(eventually([&] { return system.clock.sleepers() == 1; }));
        EXPECT_EQ(store.wallCount(), row.count);
        system.clock.advance(900ms);
        answer(wall, body({}));
        ASSERT_TRUE(eventually([&] { return store.wallMutations().isEmpty(); }));
    }
}

TEST_F(WallSession, aRemovalTakesAllItemsOfTheIdAndUpdatesTheCopy) {
    const auto item = pinned(foible(1), u"twice"_s);
    refresh({item, item, pinned(foible(2))});
    start([&] { return store.removeWallItem(item); });
    expectRequest(wall);
    EXPECT_EQ(lastBody(), QJsonObject({{u"remove"_s, u"twice"_s}}));
    await(store.removeWallItem(item));
    answer(wall, "{}");
    ASSERT_TRUE(eventually([&] { return store.wallMutations().isEmpty(); }));
    EXPECT_EQ(store.wall(), QList<WallItem>{pinned(foible(2))});
    EXPECT_EQ(copy(), store.wall());
}

TEST_F(WallSession, afterAFailureTheWallIsAsItWasAndCanBeChangedAgain) {
    const auto item = pinned(foible(1));
    refresh({item});
    start([&] { return store.removeWallItem(item); });
    answer(wall, R"({"error":"e","message":"Not removed."})", 500);
    ASSERT_TRUE(eventually([&] { return store.wallMutations().isEmpty(); }));
    EXPECT_EQ(store.notice(), u"Not removed."_s);
    store.beginToggleWallCase(foible(1));
    answer(wallCase, R"({"error":"e","message":"Not toggled."})", 500);
    ASSERT_TRUE(eventually([&] { return store.wallMutations().isEmpty(); }));
    EXPECT_EQ(store.notice(), u"Not toggled."_s);
    EXPECT_EQ(store.wall(), QList<WallItem>{item});
}

TEST_F(WallSession, aReplyAfterAChangeOfIdentityTouchesNothing) {
    const auto item = pinned(foible(1));
    for (const bool succeeds : {true, false}) {
        StoreAccess::setAccount(store, u"user"_s);
        StoreAccess::setWall(store, {item});
        open({}, {});
        store.beginRefreshWall();
        expectRequest(wall);
        start([&] { return store.removeWallItem(item); });
        expectRequest(wall, 2);
        store.beginToggleWallCase(foible(2));
        expectRequest(wallCase);
        store.beginPinChat();
        expectRequest(wallChat);

        StoreAccess::setAccount(store, u"another"_s);
        StoreAccess::setWall(store, {});
        StoreAccess::setBusy(store, false, false);
        StoreAccess::setWallMutations(store, {u"of another"_s});
        const auto writes = system.files.written();
        const int status = succeeds ? 200 : 500;
        system.transport.answer(wall, status, body({item}));
        system.transport.answer(wall, status, "{}");
        system.transport.answer(wallCase, status, R"({"on":true})");
        system.transport.answer(wallChat, status,
                                R"({"ok":true,"item":{"id":"9","kind":"chat","createdAt":1}})");
        settleEventLoop();
        EXPECT_TRUE(store.wall().isEmpty());
        EXPECT_EQ(store.wallMutations(), QSet<QString>{u"of another"_s});
        EXPECT_EQ(store.notice(), std::nullopt);
        EXPECT_EQ(store.chat().wallID, std::nullopt);
        EXPECT_EQ(system.files.written(), writes);
        EXPECT_EQ(system.clock.sleepers(), 0);
    }
}

TEST_F(WallSession, aFirstPinHasNoIdAndTheNextOneBothIds) {
    auto weak = foible(2);
    weak.strong = false;
    weak.note = u"loosely"_s;
    open({foible(1), weak, foible(1)}, {});
    store.setSelectedArchives({u"foible"_s});
    store.beginPinChat();
    expectRequest(wallChat);
    auto first = lastBody();
    EXPECT_EQ(first[u"site"_s], ArchiveStyle::domain(u"foible"_s));
    EXPECT_FALSE(first.contains(u"id"_s) || first[u"thread"_s].toObject().contains(u"id"_s));
    EXPECT_TRUE(store.isPinning());
    await(store.pinChat());
    EXPECT_EQ(requests(), 1);

    WallItem item;
    item.id = u"wall item"_s;
    item.kind = u"chat"_s;
    item.createdAt = 77;
    item.body = QString::fromUtf8(QJsonDocument(first[u"thread"_s].toObject()).toJson());
    const auto reply = R"({"ok":true,"item":)" + Json::encode(item) + "}";
    answer(wallChat, reply);
    EXPECT_EQ(store.notice(), u"The conversation is on your wall."_s);
    EXPECT_EQ(store.chat().wallID, item.id);
    EXPECT_EQ(store.library().conversations.first(), store.chat());
    EXPECT_EQ(store.library().sync->pending.size(), 1);
    answer(wall, body({item}));
    finishPin();

    // Cited since: one more case. The others stay as they were pinned.
    auto &chat = StoreAccess::chat(store);
    auto renamed = foible(1);
    renamed.title = u"Another title"_s;
    chat.messages.last().references = {renamed, foible(3)};
    store.setSelectedArchives({});
    store.beginPinChat();
    answer(wall, body({item}));
    expectRequest(wallChat);
    const auto second = lastBody();
    EXPECT_EQ(second[u"id"_s], item.id);
    EXPECT_FALSE(second.contains(u"site"_s));
    const auto thread = Json::decode<SavedChat>(
        QJsonDocument(second[u"thread"_s].toObject()).toJson(QJsonDocument::Compact));
    EXPECT_EQ(thread.id, item.id);
    EXPECT_EQ(thread.savedAt, 77);
    EXPECT_EQ(thread.lit, ArchiveStyle::ids());
    ASSERT_EQ(thread.cases.size(), 2);
    EXPECT_EQ(thread.cases[0].title, foible(1).title);
    EXPECT_EQ(thread.cases[1].id, u"3"_s);
    answer(wallChat, reply);
    answer(wall, body({item}));
    finishPin();
}

TEST_F(WallSession, aPinWhoseItemIsGoneIsToldAndNotMadeAnew) {
    WallItem unreadable;
    unreadable.id = u"mine"_s;
    unreadable.kind = u"chat"_s;
    unreadable.body = u"{}"_s;
    for (const auto &items : {QList<WallItem>(), QList{unreadable}}) {
        open({}, u"mine"_s);
        store.setNotice(std::nullopt);
        store.beginPinChat();
        answer(wall, body(items));
        finishPin();
        EXPECT_EQ(store.notice(), u"This conversation is no longer on your wall, so its saved copy "
                                  "could not be updated."_s);
        EXPECT_EQ(store.chat().wallID, u"mine"_s);
    }
}

TEST_F(WallSession, nothingIsPinnedWhileAnAnswerIsWrittenOrWithoutMessages) {
    open({}, {});
    StoreAccess::setBusy(store, true, false);
    await(store.pinChat());
    StoreAccess::setBusy(store, false, false);
    StoreAccess::chat(store) = Conversation();
    await(store.pinChat());
    EXPECT_EQ(requests(), 0);
    EXPECT_EQ(store.notice(), std::nullopt);
}

TEST_F(WallSession, aConversationThatWasLeftWhilePinningIsNotTouched) {
    open({}, {});
    store.beginPinChat();
    expectRequest(wallChat);
    open({}, {});
    answer(wallChat, R"({"ok":true,"item":{"id":"9","kind":"chat","createdAt":1}})");
    finishPin();
    EXPECT_EQ(store.chat().wallID, std::nullopt);
    EXPECT_EQ(store.notice(), std::nullopt);
    EXPECT_TRUE(store.library().conversations.isEmpty());
}

TEST_F(WallSession, aPinnedChatComesBackAsANewConversation) {
    open({foible(1), foible(2)}, u"mine"_s);
    auto greeting = StoreAccess::chat(store).messages.last();
    greeting.content = u"Welcome."_s;
    greeting.references = {};
    ChatMessage silent;
    silent.role = u"assistant"_s;
    auto &messages = StoreAccess::chat(store).messages;
    messages.prepend(greeting);
    messages.append(silent);
    const auto saved = SavedChat::snapshot(store.chat(), {u"shift"_s, u"foible"_s}, std::nullopt);
    EXPECT_EQ(saved.lit, (QList<QString>{u"foible"_s, u"shift"_s}));
    EXPECT_EQ(saved.question, u"Why do bridges fall?"_s);
    EXPECT_EQ(saved.turns.size(), 2);

    store.resumeWallChat(saved);
    const auto &chat = store.chat();
    EXPECT_EQ(store.destination(), u"chat"_s);
    EXPECT_EQ(store.selectedArchives(), saved.lit);
    EXPECT_EQ(chat.title, saved.question);
    EXPECT_EQ(chat.wallID, u"mine"_s);
    ASSERT_EQ(chat.messages.size(), 4);
    EXPECT_EQ(chat.messages[0].content, saved.question);
    EXPECT_TRUE(chat.messages[1].content.isEmpty());
    const auto card = chat.messages[1].references.first();
    EXPECT_EQ(card.key, foible(1).key);
    EXPECT_EQ(card.era, foible(1).era);
    EXPECT_EQ(card.strong, true);
    EXPECT_EQ(chat.messages[3].content, u"They resonate."_s);
    EXPECT_TRUE(SavedChat().conversation().messages.size() == 1);
}
