#include "BuildSettings.h"
#include "platform/Start.h"
#include "screens/AccountModel.h"
#include "screens/ProfileEditorModel.h"
#include "screens/SignInModel.h"
#include "screens/UpdateCheck.h"
#include "service/Endpoints.h"
#include "tests/store/StoreTest.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

QString path(QLatin1String endpoint) {
    return QLatin1Char('/') + endpoint;
}

class AccountModels : public StoreTest {
protected:
    template <class Model>
    void connectTo(Model &model) {
        model.setProperty("store", QVariant::fromValue(&store));
        if constexpr (std::is_base_of_v<QQmlParserStatus, Model>)
            model.componentComplete();
    }

    void waitFor(QLatin1String endpoint) {
        ASSERT_TRUE(eventually([&] { return system.transport.waiting(path(endpoint)) > 0; }));
    }

    void signIn(const std::optional<QString> &email = {}) {
        Account account;
        account.user.id = u"user"_s;
        account.user.email = email;
        StoreAccess::setAccount(store, account);
    }
};

} // namespace

TEST_F(AccountModels, aFailedLoginIsToldAndTheNextTryClearsIt) {
    SignInModel model;
    connectTo(model);
    QSignalSpy succeeded(&model, &SignInModel::succeeded);
    model.begin(u"ann"_s, u" secret "_s);
    waitFor(Endpoint::login);
    EXPECT_EQ(lastBody()[u"password"_s], u" secret "_s);
    system.transport.answer(path(Endpoint::login), 401,
                            R"({"error":"bad_login","message":"Not known."})");
    ASSERT_TRUE(eventually([&] { return model.error() == u"Not known."_s; }));
    EXPECT_EQ(succeeded.count(), 0);

    model.begin(u"ann"_s, u"secret"_s);
    EXPECT_EQ(model.error(), QString());
    waitFor(Endpoint::login);
    store.replaceGeneration();
    system.transport.answer(path(Endpoint::login), 200,
                            R"({"token":"app_1","user":{"id":"1","handle":"a"},"plan":"free"})");
    settleEventLoop();
    EXPECT_EQ(model.error(), QString()) << "what was overtaken says nothing";
}

TEST_F(AccountModels, eachChangeOfTheProfileHasItsForm) {
    struct Row {
        QString action;
        QString titleKey;
        QJsonObject body;
    };
    for (const auto &row : {
             Row{u"rename"_s, u"changeName"_s, {{u"action"_s, u"rename"_s}, {u"handle"_s, u"v"_s}}},
             Row{u"email"_s, u"changeEmail"_s, {{u"action"_s, u"email"_s}, {u"email"_s, u"v"_s}}},
             Row{u"password"_s,
                 u"changePassword"_s,
                 {{u"action"_s, u"password"_s}, {u"old"_s, u"o"_s}, {u"new"_s, u"v"_s}}},
             Row{u"delete"_s,
                 u"deleteAccount"_s,
                 {{u"action"_s, u"delete"_s}, {u"password"_s, u"v"_s}}},
             Row{u"else"_s, u"acctProfile"_s, {{u"action"_s, u"else"_s}, {u"password"_s, u"v"_s}}},
         }) {
        ProfileEditorModel model;
        QSignalSpy told(&model, &ProfileEditorModel::actionChanged);
        model.setProperty("action", row.action);
        EXPECT_EQ(told.count(), 1) << "a sheet may have read the title before";
        EXPECT_EQ(model.titleKey(), row.titleKey);
        EXPECT_EQ(model.body(u"v"_s, u"o"_s), row.body);
    }
}

TEST_F(AccountModels, aFailedChangeStaysInTheSheet) {
    signIn();
    ProfileEditorModel model;
    connectTo(model);
    model.setProperty("action", u"rename"_s);
    QSignalSpy succeeded(&model, &ProfileEditorModel::succeeded);
    model.submit(u"Bea"_s, {});
    model.submit(u"twice"_s, {});
    waitFor(Endpoint::profile);
    EXPECT_EQ(system.transport.waiting(path(Endpoint::profile)), 1);
    EXPECT_TRUE(model.isBusy());
    system.transport.answer(path(Endpoint::profile), 409,
                            R"({"error":"taken","message":"That name is taken."})");
    ASSERT_TRUE(eventually([&] { return !model.isBusy(); }));
    EXPECT_EQ(model.error(), u"That name is taken."_s);

    model.submit(u"Cleo"_s, {});
    EXPECT_EQ(model.error(), QString());
    waitFor(Endpoint::profile);
    system.transport.answer(path(Endpoint::profile), 200, "{}");
    waitFor(Endpoint::me);
    system.transport.fail(path(Endpoint::me), URLError::Code::timedOut);
    ASSERT_TRUE(eventually([&] { return succeeded.count() == 1; }));
    EXPECT_FALSE(model.isBusy());
}

TEST_F(AccountModels, aResendCountsForTheAddressThatItWasAskedFor) {
    signIn(u"a@example.org"_s);
    AccountModel model;
    connectTo(model);
    const auto resend = [&](const QByteArray &reply) {
        model.beginResend();
        model.beginResend();
        waitFor(Endpoint::profile);
        EXPECT_EQ(system.transport.waiting(path(Endpoint::profile)), 1);
        system.transport.answer(path(Endpoint::profile), 200, reply);
        ASSERT_TRUE(eventually([&] { return !model.isResending(); }));
    };
    resend(R"({"verificationSent":false})");
    EXPECT_FALSE(model.isResent());
    EXPECT_EQ(store.notice(), store.text(u"acctUnverified"_s));
    resend(R"({"verificationSent":true})");
    EXPECT_TRUE(model.isResent());
    signIn(u"b@example.org"_s);
    EXPECT_FALSE(model.isResent());
}

TEST_F(AccountModels, addressesFollowTheServiceAndTheLanguage) {
    AccountModel model;
    connectTo(model);
    const QString origin = QString::fromLatin1(BuildSettings::accountOrigin);
    EXPECT_EQ(model.registration(), QUrl(origin + u"/google/register?lang=en"_s));
    Health health;
    health.accountUrl = u"http://127.0.0.1:4310"_s;
    StoreAccess::setHealth(store, health);
    store.setLanguage(AppLanguage::zhHant);
    EXPECT_EQ(model.registration(), QUrl(u"http://127.0.0.1:4310/google/register?lang=zh"_s));
    EXPECT_EQ(model.accountPage(), QUrl(u"http://127.0.0.1:4310/account"_s));
    EXPECT_TRUE(model.privacy().path() == u"/zh/privacy/"_s);
    store.setLanguage(AppLanguage::de);
    EXPECT_TRUE(model.terms().path() == u"/terms/"_s);
    health.accountUrl = u"http://elsewhere.example"_s;
    StoreAccess::setHealth(store, health);
    EXPECT_EQ(model.accountPage(), QUrl(origin + u"/account"_s));
}

TEST_F(AccountModels, theNewestReleaseIsFoundWhateverServerIsSet) {
    UpdateCheck check;
    connectTo(check);
    const auto release = [](const QByteArray &version, const QByteArray &name, bool fit = true) {
        return R"({"platform":"mac","version":")" + version + R"(","url":"/downloads/)" + name +
               R"(","signed":true,"notarized":)" + (fit ? "true" : "false") + "}";
    };
    struct Row {
        QByteArray items;
        QString message;
        QString download;
    };
    const auto found = store.text(u"macUpdateAvailable"_s).replace(u"{v}"_s, u"9.10.0"_s);
    for (const auto &row : {
             Row{"", store.text(u"macUpdateUnknown"_s), {}},
             Row{release("99.0.0", "a.dmg", false), store.text(u"macUpdateUnknown"_s), {}},
             Row{release("0.0.1", "a.dmg"), store.text(u"upToDate"_s), {}},
             Row{release("9.9.0", "a.dmg") + "," + release("9.10.0", "b.dmg") + "," +
                     release("9.10.0", "c.dmg") + "," + release("99.0.0", "d.dmg", false),
                 found, u"/downloads/b.dmg"_s},
         }) {
        check.begin();
        check.begin();
        waitFor(Endpoint::downloads);
        EXPECT_EQ(system.transport.waiting(path(Endpoint::downloads)), 1);
        EXPECT_EQ(system.transport.requests().back().url.host(),
                  QUrl(QString::fromLatin1(BuildSettings::publicSite)).host());
        system.transport.answer(path(Endpoint::downloads), 200, R"({"items":[)" + row.items + "]}");
        ASSERT_TRUE(eventually([&] { return !check.isChecking(); }));
        EXPECT_EQ(check.message(), row.message);
        EXPECT_EQ(check.download().path(), row.download);
    }
    check.begin();
    EXPECT_EQ(check.message(), QString());
    waitFor(Endpoint::downloads);
    system.transport.fail(path(Endpoint::downloads), URLError::Code::timedOut);
    ASSERT_TRUE(eventually([&] { return !check.isChecking(); }));
    EXPECT_EQ(check.message(), store.text(u"macUpdateUnknown"_s));
}
