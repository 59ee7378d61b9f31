#include "storage/ProfileCache.h"
#include "tests/store/AccountTest.h"

using namespace Qt::StringLiterals;

namespace {

class AccountUpkeep : public AccountTest {
protected:
    AccountUpkeep() {
        signIn(u"ann"_s);
        system.transport.always(path(Endpoint::quota), std::nullopt);
        quota = store.quotaRecord();
        EXPECT_TRUE(store.isQuotaKnown());
    }

    /// What outlives a request, in every way there is.
    void changeIdentity(int way) {
        system.transport.always(path(Endpoint::quota), HttpResponse{500, ""});
        if (way == 0)
            await(store.logout());
        if (way == 1)
            await(store.changeServer(u"https://away%1.example"_s.arg(++servers)));
        if (way == 2)
            signIn(u"bob"_s);
    }

    Quota quota;
    int servers = 0;
};

} // namespace

TEST_F(AccountUpkeep, aRefreshTakesTheQuotaAwayOnlyWithThePlan) {
    for (const auto &plan : {u"pro"_s, u"pro"_s, u"free"_s}) {
        const bool changed = store.account()->plan != plan;
        auto refreshing = store.refreshAccount();
        await(store.refreshAccount());
        ASSERT_EQ(waiting(Endpoint::me), 1) << "one at a time";
        answer(Endpoint::me, 200, accountBody(u"ann"_s, plan));
        ASSERT_TRUE(eventually([this] { return waiting(Endpoint::quota) == 1; }));
        EXPECT_EQ(store.account()->plan, plan);
        EXPECT_EQ(store.isQuotaKnown(), !changed);
        EXPECT_EQ(ProfileCache::get(system.files, home, u"app_ann"_s), store.account());
        EXPECT_TRUE(store.isRefreshingAccount());
        answer(Endpoint::quota, 200, R"({"plan":"x","used":2,"limit":3})");
        await(std::move(refreshing));
        EXPECT_EQ(store.quotaRecord().used, 2);
        EXPECT_FALSE(store.isRefreshingAccount());
    }
}

TEST_F(AccountUpkeep, aFailedRefreshSignsNobodyOut) {
    const auto account = store.account();
    const std::vector<std::pair<int, QByteArray>> failures = {
        {401, ""}, {403, R"({"error":"signin_required"})"}, {500, ""}, {200, "{}"}};
    for (const bool shown : {false, true}) {
        for (const auto &[status, body] : failures) {
            store.dismissNotice();
            auto refreshing = store.refreshAccount(shown);
            answer(Endpoint::me, status, body);
            await(std::move(refreshing));
            EXPECT_EQ(store.noticeText(), shown ? text("loadFailed") : u""_s);
            EXPECT_EQ(store.account(), account);
            EXPECT_EQ(token(home), "app_ann");
            EXPECT_EQ(store.quota(), quota);
            EXPECT_FALSE(store.isRefreshingAccount());
        }
    }
    store.dismissNotice();
    auto refreshing = store.refreshAccount(true);
    answer(Endpoint::me, 200, accountBody(u"bob"_s));
    await(std::move(refreshing));
    EXPECT_EQ(store.account(), account) << "somebody else is no news";
    EXPECT_FALSE(store.notice() || store.isRefreshingAccount());

    auto asking = store.refreshQuota();
    answer(Endpoint::quota, 500, "");
    await(std::move(asking));
    EXPECT_EQ(store.quota(), quota);
}

TEST_F(AccountUpkeep, whatComesLateTouchesNobodyElse) {
    struct Row {
        QLatin1String endpoint;
        std::function<Task<void>()> begin;
        QByteArray reply;
        QString failure;
    };
    const QJsonObject rename{{u"action"_s, u"rename"_s}};
    const std::vector<Row> rows = {
        {Endpoint::me,
         [this] { return store.refreshAccount(true); },
         accountBody(u"ann"_s, u"pro"_s),
         {}},
        {Endpoint::quota,
         [this] { return store.refreshQuota(); },
         R"({"plan":"x","used":9,"limit":9})",
         {}},
        {Endpoint::profile,
         [this] {
             return store.updateProfile({{u"action"_s, u"delete"_s}});
         },
         "{}", u"cancelled"_s},
        {Endpoint::profile, [this, rename] { return store.updateProfile(rename); }, "{}",
         u"cancelled"_s},
        {Endpoint::me,
         [this, rename] {
             auto updating = store.updateProfile(rename);
             answer(Endpoint::profile, 200, "{}");
             EXPECT_TRUE(eventually([this] { return waiting(Endpoint::me) == 1; }));
             return updating;
         },
         accountBody(u"ann"_s, u"pro"_s), u"cancelled"_s},
    };
    for (const auto &row : rows) {
        for (int way = 0; way < 3; ++way) {
            for (const int status : {200, 500}) {
                SCOPED_TRACE(row.endpoint.latin1() + std::to_string(way) + std::to_string(status));
                system.transport.always(path(Endpoint::quota), HttpResponse{500, ""});
                if (user() != u"ann"_s)
                    signIn(u"ann"_s);
                system.transport.always(path(Endpoint::quota), std::nullopt);
                store.dismissNotice();
                auto late = row.begin();
                changeIdentity(way);
                const auto account = store.account();
                const auto kept = token(store.baseString());
                answer(row.endpoint, status, row.reply);
                const auto failure = failureOf(std::move(late));
                if (status == 200 || row.endpoint == Endpoint::me)
                    EXPECT_EQ(failure, row.failure);
                EXPECT_EQ(store.account(), account);
                EXPECT_EQ(token(store.baseString()), kept);
                EXPECT_FALSE(store.notice() || store.quota() || store.isRefreshingAccount());
            }
        }
    }
}

TEST_F(AccountUpkeep, aProfileIsSavedEvenWhereItCannotBeShown) {
    struct Row {
        QString action;
        int profileStatus;
        int accountStatus;
        QString failure;
        QString noticeKey;
    };
    const QList<Row> rows = {
        {u"rename"_s, 200, 200, {}, {}},
        {u"email"_s, 200, 200, {}, u"emailChanged"_s},
        {u"email"_s, 200, 500, {}, u"profileSavedRefreshFailed"_s},
        {u"password"_s, 200, 401, {}, u"profileSavedRefreshFailed"_s},
        {u"email"_s, 409, 0, u"taken"_s, {}},
        {u"delete"_s, 403, 0, u"taken"_s, {}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.action.toStdString() + std::to_string(row.accountStatus));
        store.dismissNotice();
        const auto account = store.account();
        auto updating = store.updateProfile({{u"action"_s, row.action}});
        answer(Endpoint::profile, row.profileStatus, R"({"error":"taken"})");
        if (row.accountStatus != 0) {
            ASSERT_TRUE(eventually([this] { return waiting(Endpoint::me) == 1; }));
            EXPECT_EQ(store.notice(), std::nullopt) << "not before the account is there";
            answer(Endpoint::me, row.accountStatus, accountBody(u"ann"_s, row.action));
        }
        EXPECT_EQ(failureOf(std::move(updating)), row.failure);
        EXPECT_EQ(store.notice().has_value(), !row.noticeKey.isEmpty());
        EXPECT_EQ(store.noticeText(), store.text(row.noticeKey));
        if (row.accountStatus == 200)
            EXPECT_EQ(ProfileCache::get(system.files, home, u"app_ann"_s)->plan, row.action);
        else
            EXPECT_EQ(store.account(), account);
    }

    system.credentials.failRemovals();
    auto deleting = store.updateProfile({{u"action"_s, u"delete"_s}});
    answer(Endpoint::profile, 200, "{}");
    EXPECT_EQ(failureOf(std::move(deleting)), u"Could not update the saved login."_s);
    EXPECT_EQ(user(), u"ann"_s);
}

TEST_F(AccountUpkeep, anotherMailIsAskedForOnlyWhereThereIsAnAddress) {
    EXPECT_FALSE(await(store.resendVerification()));
    EXPECT_EQ(sent(Endpoint::profile), 0);

    StoreAccess::setEmail(store, u"ann@example.org"_s);
    for (const bool done : {false, true}) {
        auto resending = store.resendVerification();
        EXPECT_EQ(*system.transport.requests().back().body,
                  R"({"action":"email","email":"ann@example.org"})");
        answer(Endpoint::profile, 200, done ? R"({"verificationSent":true})" : "{}");
        EXPECT_EQ(await(std::move(resending)), done);
    }
}
