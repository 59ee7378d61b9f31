#include "storage/LibraryDisk.h"
#include "storage/ProfileCache.h"
#include "tests/store/AccountTest.h"
#include "tests/support/MessageCatcher.h"

using namespace Qt::StringLiterals;

namespace {

const auto notConfirmed =
    u"Signed out on this Mac. The service could not confirm remote sign-out."_s;
const auto notChecked =
    u"Your login could not be checked. Try again when the account service is available."_s;
const QByteArray oneCard =
    R"({"saved":[{"id":"1","key":"foible:1","archive":"foible","title":"A bridge","summary":"",)"
    R"("category":"","era":"","locale":"en"}],"conversations":[]})";

class AccountSession : public AccountTest {
protected:
    AccountSession() { system.files.contents()[libraryPath({})] = oneCard; }

    QString libraryPath(const std::optional<QString> &user) {
        return LibraryDisk::file(system.files, LibraryDisk::key(home, user));
    }

    /// What changes from now on, in order, and how far the login has got by then.
    std::shared_ptr<QStringList> record() {
        const auto order = std::make_shared<QStringList>();
        const auto note = [this, order](const QString &what) {
            order->append(what + (token(home).isNull() ? u""_s : u" token"_s) +
                          (profileKept() ? u" profile"_s : u""_s));
        };
        QObject::connect(&store, &AppStore::syncingChanged, [=] { note(u"sync"_s); });
        QObject::connect(&store, &AppStore::authenticatingChanged, [=] { note(u"flag"_s); });
        QObject::connect(&store, &AppStore::accountChanged, [=] { note(u"account"_s); });
        QObject::connect(&store, &AppStore::chatChanged, [=] { note(u"chat"_s); });
        QObject::connect(&store, &AppStore::libraryChanged, [=] { note(u"library"_s); });
        StoreAccess::setSyncing(store);
        return order;
    }

    bool profileKept() {
        return ProfileCache::get(system.files, home, QString::fromUtf8(token(home))).has_value();
    }
};

} // namespace

TEST_F(AccountSession, aLoginIsTakenUpInOrder) {
    const auto order = record();
    auto signingIn = store.login(u"Ann "_s, u" secret"_s);
    EXPECT_TRUE(store.isAuthenticating());
    EXPECT_EQ(failureOf(store.login(u"other"_s, u"other"_s)), u""_s);
    ASSERT_EQ(sent(Endpoint::login), 1) << "one at a time";
    const auto request = system.transport.requests().back();
    EXPECT_EQ(lastBody(), (QJsonObject{{u"handle"_s, u"Ann "_s},
                                       {u"password"_s, u" secret"_s},
                                       {u"device"_s, u"Quillmere for Mac"_s}}));
    EXPECT_EQ(request.headers.size(), 1U) << "no token yet";

    answer(Endpoint::login, 200, loginBody(u"ann"_s));
    await(std::move(signingIn));
    EXPECT_EQ(*order, (QStringList{u"flag"_s, u"sync token"_s, u"flag token"_s, u"account token"_s,
                                   u"chat token profile"_s, u"library token profile"_s}));
    EXPECT_EQ(token(home), "app_ann");
    EXPECT_TRUE(store.library().sync) << "the account's own library";
    EXPECT_TRUE(store.library().saved.isEmpty());
    settleEventLoop();
    EXPECT_EQ(store.quotaRecord().limit, 5);
    for (auto file = system.files.contents().cbegin(); file != system.files.contents().cend();
         ++file)
        EXPECT_FALSE(file.key().contains(u"app_"_s) || file.value().contains("app_"));
}

TEST_F(AccountSession, aLoginThatFailsLeavesAGuestAndNoSecretInAnyWords) {
    struct Row {
        int status;
        QByteArray body;
        QString words;
        bool removalFails = false;
        bool additionFails = false;
    };
    const auto good = loginBody(u"ann"_s);
    const QList<Row> rows = {
        {401, R"({"error":"wrong","message":"Wrong name."})", u"Wrong name."_s},
        {200, loginBody(u""_s), text("urlError.badServerResponse")},
        {200, QByteArray(good).replace("app_", "web_"), text("urlError.badServerResponse")},
        {200, good.chopped(1), text("decodingError")},
        {200, good, u"Could not update the saved login."_s, true, false},
        {200, good, u"Could not save the login securely."_s, false, true},
    };
    const MessageCatcher catcher;
    store.loadLibrary();
    for (const auto &row : rows) {
        system.credentials.failRemovals(row.removalFails);
        system.credentials.failAdditions(row.additionFails);
        const auto chat = store.chat().id;
        auto signingIn = store.login(u"ann"_s, u"secret"_s);
        answer(Endpoint::login, row.status, row.body);
        EXPECT_EQ(failureOf(std::move(signingIn)), row.words);
        EXPECT_FALSE(store.isSignedIn() || store.isAuthenticating());
        EXPECT_TRUE(token(home).isNull());
        EXPECT_EQ(store.notice(), std::nullopt) << "the form tells it";
        EXPECT_EQ(store.chat().id, chat);
        EXPECT_EQ(store.library().saved.size(), 1);
    }
    EXPECT_TRUE(catcher.messages().isEmpty());
}

TEST_F(AccountSession, aLateLoginIsDroppedWholeUnlessItWasOnlyCancelled) {
    struct Row {
        const char *name;
        std::function<void()> change;
        int status = 200;
        QString failure = u"cancelled"_s;
    };
    const std::function<void()> cancel = [this] { store.cancelAuthentication(); };
    const std::vector<Row> rows = {
        {"other server", [this] { await(store.changeServer(away)); }},
        {"same server", [this] { await(store.changeServer(store.baseString())); }},
        {"sign-out", [this] { await(store.logout()); }},
        {"failed", cancel, 500, u"wrong"_s},
        {"accepted", cancel, 200, u""_s},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        const bool accepted = row.failure.isEmpty();
        auto late = store.login(u"ann"_s, u"secret"_s);
        row.change();
        EXPECT_FALSE(store.isAuthenticating());
        auto newer = store.login(u"bob"_s, u"secret"_s);
        answer(Endpoint::login, row.status,
               row.status == 200 ? loginBody(u"ann"_s) : R"({"error":"wrong"})");
        EXPECT_EQ(failureOf(std::move(late)), row.failure);
        EXPECT_EQ(token(store.baseString()).isNull(), !accepted);
        EXPECT_EQ(store.isSignedIn(), accepted);
        EXPECT_EQ(store.isAuthenticating(), !accepted) << "left to the newer login";
        answer(Endpoint::login, 401, R"({"error":"wrong"})");
        EXPECT_EQ(failureOf(std::move(newer)), u"wrong"_s);
        EXPECT_FALSE(store.isAuthenticating());
    }
    EXPECT_TRUE(token(home).isNull());
}

TEST_F(AccountSession, aPasswordGoesToNoServerThatItWasNotTypedFor) {
    system.credentials.lock();
    auto signingIn = store.login(u"ann"_s, u"secret"_s);
    auto changing = store.changeServer(away);
    settleEventLoop();
    system.credentials.unlock();
    EXPECT_EQ(failureOf(std::move(signingIn)), u"cancelled"_s);
    await(std::move(changing));
    EXPECT_EQ(sent(Endpoint::login), 0);
}

TEST_F(AccountSession, aSignOutWaitsForTheKeyringAndCountsOnce) {
    signIn(u"ann"_s);
    system.credentials.lock();
    auto leaving = store.logout();
    auto again = store.logout();
    settleEventLoop();
    EXPECT_EQ(user(), u"ann"_s);
    EXPECT_FALSE(token(home).isNull());
    system.credentials.unlock();
    await(std::move(leaving));
    await(std::move(again));
    EXPECT_FALSE(store.isSignedIn());
    EXPECT_TRUE(token(home).isNull());
    EXPECT_EQ(sent(Endpoint::logout), 1);
}

TEST_F(AccountSession, everyEndOfALoginTakesTheSameSteps) {
    struct Row {
        const char *name;
        std::function<void()> end;
        QString first;
        qsizetype logouts = 0;
    };
    const std::vector<Row> rows = {
        {"sign-out", [this] { await(store.logout()); }, u"sync"_s, 1},
        {"deletion",
         [this] {
             auto deleting = store.updateProfile({{u"action"_s, u"delete"_s}});
             answer(Endpoint::profile, 200, "{}");
             await(std::move(deleting));
         },
         u"sync"_s},
        {"refused",
         [this] {
             auto connecting = store.connect();
             EXPECT_TRUE(eventually([this] { return waiting(Endpoint::me) == 1; }));
             answer(Endpoint::me, 401, "");
             await(std::move(connecting));
         },
         u"sync token profile"_s},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        signIn(u"ann"_s);
        const auto logouts = sent(Endpoint::logout);
        const auto order = record();
        row.end();
        EXPECT_EQ(*order, (QStringList{row.first, u"account"_s, u"chat"_s, u"library"_s}));
        EXPECT_EQ(store.library().saved.size(), 1) << "the guest's library";
        EXPECT_FALSE(store.isSignedIn() || store.quota() || store.notice());
        ASSERT_EQ(sent(Endpoint::logout), logouts + row.logouts);
        store.disconnect();
    }
    EXPECT_TRUE(system.files.exists(libraryPath(u"ann"_s)));
    for (const auto &request : system.transport.requests()) {
        if (request.url.path() == path(Endpoint::logout)) {
            EXPECT_EQ(request.headers.front().second, "Bearer app_ann");
        }
    }
}

TEST_F(AccountSession, aSignOutStandsWhateverTheServiceSays) {
    system.transport.always(path(Endpoint::logout), std::nullopt);
    const std::vector<std::pair<int, QByteArray>> failures = {{500, ""}, {200, "none"}, {401, ""}};
    for (const auto &[status, body] : failures) {
        for (const bool newIdentity : {false, true}) {
            signIn(u"ann"_s);
            store.dismissNotice();
            auto leaving = store.logout();
            EXPECT_FALSE(store.isSignedIn());
            EXPECT_TRUE(token(home).isNull());
            if (newIdentity)
                signIn(u"bob"_s);
            answer(Endpoint::logout, status, body);
            await(std::move(leaving));
            EXPECT_EQ(store.noticeText(), newIdentity ? u""_s : notConfirmed);
            EXPECT_EQ(store.isSignedIn(), newIdentity);
        }
    }

    const auto before = sent(Endpoint::logout);
    system.credentials.failRemovals();
    await(store.logout());
    EXPECT_EQ(store.notice(), u"Could not update the saved login."_s);
    EXPECT_EQ(user(), u"bob"_s);
    EXPECT_EQ(sent(Endpoint::logout), before);
}

TEST_F(AccountSession, anUnusableAddressChangesNothing) {
    auto signingIn = store.login(u"ann"_s, u"secret"_s);
    for (const auto &value : {u"http://away.example"_s, u"away.example"_s, u" "_s + away, u""_s}) {
        store.dismissNotice();
        await(store.changeServer(value));
        EXPECT_EQ(store.notice(), u"Use an HTTPS server address, or HTTP on localhost."_s);
        EXPECT_EQ(store.baseString(), home);
        EXPECT_EQ(system.preferences.value(u"server"_s), std::nullopt);
    }
    answer(Endpoint::login, 200, loginBody(u"ann"_s));
    EXPECT_EQ(failureOf(std::move(signingIn)), u""_s);
    EXPECT_EQ(user(), u"ann"_s);
}

TEST_F(AccountSession, nothingIsReadOfALoginBeforeTheKeyringIsReady) {
    leaveLogin(home, u"ann"_s);
    system.credentials.lock();
    auto connecting = store.connect();
    settleEventLoop();
    EXPECT_EQ(system.credentials.calls(), QStringList{u"prepare"_s});
    EXPECT_TRUE(system.transport.requests().empty());

    // Somebody who saves a case meanwhile is a guest, and adds to the guest's library.
    StoreAccess::library(store).saved.append(CaseCard());
    store.persist();
    EXPECT_EQ(LibraryDisk::load(system.files, store.libraryKey()).saved.size(), 2);

    system.credentials.unlock();
    ASSERT_TRUE(eventually([this] { return store.isSignedIn(); }));
    EXPECT_EQ(system.transport.requests().front().headers.front().second, "Bearer app_ann");
    ASSERT_TRUE(eventually([this] { return waiting(Endpoint::me) == 1; }));
    answer(Endpoint::me, 200, accountBody(u"ann"_s));
    await(std::move(connecting));
}

TEST_F(AccountSession, onlyARefusedLoginIsGivenUp) {
    struct Row {
        int status;
        QByteArray body;
        QString user; // when ann's profile was kept
        QString userWithoutProfile;
        QString notice;
        bool removalFails = false;
    };
    const QByteArray refusal = R"({"error":"signin_required"})";
    const QList<Row> rows = {
        {200, accountBody(u"ann"_s, u"pro"_s), u"ann"_s, u"ann"_s, {}},
        {200, accountBody(u"bob"_s), u"ann"_s, u"bob"_s, {}},
        {200, "{}", u"ann"_s, {}, notChecked},
        {401, "", {}, {}, {}},
        {403, refusal, {}, {}, {}},
        {403, R"({"error":"forbidden"})", u"ann"_s, {}, notChecked},
        {500, "", u"ann"_s, {}, notChecked},
        {401, "", u"ann"_s, {}, u"Could not update the saved login."_s, true},
    };
    for (const auto &row : rows) {
        for (const bool withProfile : {true, false}) {
            SCOPED_TRACE(row.body.toStdString() + std::to_string(row.status));
            system.files.contents() = {{libraryPath({}), oneCard}};
            leaveLogin(home, u"ann"_s, withProfile);
            system.credentials.failRemovals(row.removalFails);
            auto changing = store.changeServer(home);
            store.dismissNotice();
            ASSERT_TRUE(eventually([this] { return waiting(Endpoint::me) == 1; }));
            const auto chat = store.chat().id;
            answer(Endpoint::me, row.status, row.body);
            await(std::move(changing));
            const auto expected = withProfile ? row.user : row.userWithoutProfile;
            const bool givenUp = row.user.isEmpty();
            EXPECT_EQ(user(), expected);
            EXPECT_EQ(token(home).isNull(), givenUp);
            EXPECT_EQ(store.chat().id != chat, givenUp);
            EXPECT_EQ(store.noticeText(), row.notice);
            EXPECT_EQ(store.library().saved.size(), expected.isEmpty() ? 1 : 0);
            EXPECT_FALSE(store.isConnecting());
            if (row.user == u"ann"_s && expected == row.user && !row.notice.size()) {
                EXPECT_TRUE(profileKept());
            }
        }
    }
}

TEST_F(AccountSession, aDeadServiceLeavesTheAccountAndItsLibrary) {
    leaveLogin(home, u"ann"_s);
    system.files.contents()[libraryPath(u"ann"_s)] = oneCard;
    system.transport.always(path(Endpoint::health), std::nullopt);
    auto connecting = store.connect();
    system.transport.fail(path(Endpoint::health), URLError::Code::cannotConnectToHost);
    await(std::move(connecting));
    EXPECT_EQ(user(), u"ann"_s);
    EXPECT_EQ(store.library().saved.size(), 1);
    EXPECT_EQ(store.notice(), text("urlError.cannotConnectToHost"));
    EXPECT_EQ(token(home), "app_ann");
}

TEST_F(AccountSession, aLateCheckTouchesNobodyElse) {
    leaveLogin(away, u"bob"_s);
    const std::vector<std::pair<int, QByteArray>> replies = {
        {401, ""}, {500, ""}, {200, accountBody(u"ann"_s)}};
    for (const auto &[status, body] : replies) {
        leaveLogin(home, u"ann"_s);
        auto stale = store.changeServer(home);
        ASSERT_TRUE(eventually([this] { return waiting(Endpoint::me) == 1; }));
        auto current = store.changeServer(away);
        EXPECT_EQ(system.preferences.value(u"server"_s), away);
        EXPECT_TRUE(store.archives().isEmpty() && !store.isConnected());
        EXPECT_EQ(system.transport.requests().back().headers.front().second, "Bearer app_bob");
        answer(Endpoint::me, status, body);
        await(std::move(stale));
        EXPECT_EQ(user(), u"bob"_s) << "before the service has answered";
        EXPECT_EQ(token(away), "app_bob");
        EXPECT_EQ(token(home), "app_ann");
        EXPECT_EQ(store.notice(), std::nullopt);
        EXPECT_TRUE(store.isConnecting());
        ASSERT_TRUE(eventually([this] { return waiting(Endpoint::me) == 1; }));
        answer(Endpoint::me, 200, accountBody(u"bob"_s));
        await(std::move(current));
        EXPECT_FALSE(store.isConnecting());
    }
}

TEST_F(AccountSession, aConnectionThatALoginOutlivedIsMadeAnew) {
    system.transport.always(path(Endpoint::health), std::nullopt);
    auto stale = store.connect();
    signIn(u"ann"_s);
    ASSERT_TRUE(eventually([this] { return waiting(Endpoint::health) == 2; }));
    for (int run = 1; run <= 2; ++run)
        answer(Endpoint::health, 200,
               R"({"ok":true,"environment":"","chatMode":"",)"
               R"("accountUrl":"","total":1})");
    ASSERT_TRUE(eventually([this] { return waiting(Endpoint::me) == 1; }));
    answer(Endpoint::me, 200, accountBody(u"ann"_s));
    await(std::move(stale));
    EXPECT_TRUE(eventually([this] { return !store.isConnecting(); }));
    EXPECT_TRUE(store.isConnected());
}
