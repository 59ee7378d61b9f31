#include "BuildSettings.h"
#include "platform/URLError.h"
#include "signin/GoogleAuthorization.h"
#include "tests/store/AccountTest.h"

#include <QJsonDocument>

using namespace Qt::StringLiterals;

namespace {

const auto site = QString::fromLatin1(BuildSettings::publicSite);
const QString code(64, u'c');

class WebSessions : public AccountTest {
protected:
    void SetUp() override { await(store.changeServer(site)); }

    qsizetype visits() const { return system.browserSession.started().size(); }

    /// Begins a login and waits for the browser.
    void visit() {
        const auto before = visits();
        store.loginWithGoogle();
        ASSERT_TRUE(store.isAuthenticating() && store.isGoogleAuthenticating());
        ASSERT_TRUE(eventually([&] { return visits() == before + 1; }));
    }
    QString callback(const QString &rest) const {
        const auto query = system.browserSession.started().last().query();
        const auto from = query.indexOf(u"state="_s);
        return u"quillmere-mac://auth/google?"_s +
               query.mid(from, query.indexOf(u'&', from) - from) + rest;
    }
    void comeBack(const QString &rest = u"&code="_s + code) {
        system.browserSession.callbacks().last().succeed(callback(rest));
        settleEventLoop();
    }

    void expectGuest(const char *name) {
        EXPECT_FALSE(store.isAuthenticating()) << name;
        EXPECT_FALSE(store.isGoogleAuthenticating()) << name;
        EXPECT_FALSE(store.isSignedIn()) << name;
        EXPECT_TRUE(token(site).isNull()) << name;
    }

    static QString words(URLError::Code kind) { return URLError(kind).localizedDescription(); }
};

} // namespace

TEST_F(WebSessions, googleIsThereOnThePublicServiceAlone) {
    const auto host = QUrl(site).host();
    const struct {
        QString base;
        bool available;
    } cases[] = {
        {u"https://"_s + host, true},
        {u"https://"_s + host + u'/', true},
        {u"https://"_s + host + u":443"_s, true},
        {u"https://"_s + host + u":443/"_s, true},
        {u"https://"_s + host + u":8443"_s, false},
        {u"http://"_s + host, false},
        {u"http://"_s + host + u":443"_s, false},
        {u"https://www."_s + host, false},
        {u"https://"_s + host.toUpper(), false},
        {u"https://me@"_s + host, false},
        {u"https://"_s + host + u"/v1"_s, false},
        {u"https://"_s + host + u"//"_s, false},
        {u"http://127.0.0.1:4310"_s, false},
        {u""_s, false},
    };
    for (const auto &one : cases) {
        TestPlatform<FakeTransport> other;
        other.preferences.setValue(u"server"_s, one.base);
        AppStore elsewhere(other.platform());
        EXPECT_EQ(elsewhere.isGoogleAvailable(), one.available) << qPrintable(one.base);
        elsewhere.loginWithGoogle();
        EXPECT_EQ(elsewhere.isAuthenticating(), one.available) << qPrintable(one.base);
        elsewhere.cancelAuthentication();
        settleEventLoop();
        EXPECT_TRUE(other.browserSession.started().isEmpty());
    }
}

TEST_F(WebSessions, aGoogleLoginBelongsToTheServerThatItBeganWith) {
    visit();
    store.loginWithGoogle();
    await(store.login(u"ada"_s, u"secret"_s));
    settleEventLoop();
    EXPECT_EQ(visits(), 1) << "one login at a time";
    EXPECT_EQ(sent(Endpoint::login), 0);

    comeBack();
    ASSERT_EQ(waiting(Endpoint::googleToken), 1);
    const auto &request = system.transport.requests().back();
    EXPECT_EQ(request.url,
              QUrl(GoogleAuthorization::accountOrigin() + path(Endpoint::googleToken)));
    EXPECT_TRUE(request.body->contains(code.toLatin1()));
    for (const auto &header : request.headers)
        EXPECT_NE(header.first, "Authorization");
    answer(Endpoint::googleToken, 200, loginBody(u"ada"_s));
    settleEventLoop();
    EXPECT_EQ(user(), u"ada"_s);
    EXPECT_EQ(token(site), tokenOf(u"ada"_s));
    EXPECT_FALSE(store.isAuthenticating() || store.isGoogleAuthenticating());
    EXPECT_EQ(store.notice(), std::nullopt);
}

TEST_F(WebSessions, aGoogleLoginThatFailsSaysWhyAndLeavesAGuest) {
    const struct {
        const char *name;
        std::function<void()> happen;
        std::optional<QString> notice;
    } cases[] = {
        {"declined", [&] { comeBack(u"&error=access_denied"_s); }, {}},
        {"given up in the browser",
         [&] {
             system.browserSession.callbacks().last().fail(
                 std::make_exception_ptr(CancellationError()));
         },
         {}},
        {"a strange callback", [&] { comeBack({}); }, words(URLError::Code::badServerResponse)},
        {"refused",
         [&] {
             comeBack();
             answer(Endpoint::googleToken, 400, R"({"error":"bad_code","message":"Too late."})");
         },
         u"Too late."_s},
        {"no login",
         [&] {
             comeBack();
             auto body = loginBody(u"ada"_s);
             answer(Endpoint::googleToken, 200, body.replace("app_", "web_"));
         },
         words(URLError::Code::badServerResponse)},
    };
    for (const auto &one : cases) {
        store.dismissNotice();
        visit();
        one.happen();
        settleEventLoop();
        EXPECT_EQ(store.notice(), one.notice) << one.name;
        expectGuest(one.name);
    }

    system.browserSession.setWorking(false);
    visit();
    settleEventLoop();
    EXPECT_EQ(store.notice(), words(URLError::Code::cannotLoadFromNetwork));
    expectGuest("no browser");
    system.random.exhaust();
    store.loginWithGoogle();
    settleEventLoop();
    EXPECT_EQ(store.notice(), words(URLError::Code::cannotCreateFile));
    expectGuest("no random bytes");
}

TEST_F(WebSessions, aCancelledGoogleLoginEndsWithoutAWordWhereverItIs) {
    store.loginWithGoogle();
    store.cancelAuthentication();
    settleEventLoop();
    EXPECT_EQ(visits(), 0);
    expectGuest("before it began");

    system.credentials.lock();
    store.loginWithGoogle();
    settleEventLoop();
    EXPECT_EQ(visits(), 0) << "the keyring comes first";
    store.cancelAuthentication();
    system.credentials.unlock();
    settleEventLoop();
    EXPECT_EQ(visits(), 0);
    expectGuest("before the keyring was open");

    for (const bool traded : {false, true}) {
        visit();
        if (traded)
            comeBack();
        store.cancelAuthentication();
        expectGuest("at once");
        auto newer = store.login(u"ada"_s, u"secret"_s);
        comeBack();
        EXPECT_TRUE(store.isAuthenticating()) << "that is the newer login's";
        EXPECT_FALSE(store.isGoogleAuthenticating());
        EXPECT_EQ(waiting(Endpoint::googleToken), 0);
        answer(Endpoint::login, 500, {});
        EXPECT_EQ(failureOf(std::move(newer)), u"http 500"_s);
        expectGuest("in the end");
    }
    EXPECT_EQ(store.notice(), std::nullopt);
}

TEST_F(WebSessions, aGoogleLoginThatWasOutlivedIsDroppedWithItsToken) {
    for (const bool traded : {false, true}) {
        visit();
        if (traded)
            comeBack();
        store.replaceGeneration();
        if (traded)
            answer(Endpoint::googleToken, 200, loginBody(u"ada"_s));
        else
            comeBack();
        settleEventLoop();
        EXPECT_EQ(waiting(Endpoint::googleToken), 0);
        EXPECT_TRUE(token(site).isNull());
        EXPECT_FALSE(store.isSignedIn());
        EXPECT_EQ(store.notice(), std::nullopt);
        EXPECT_TRUE(store.isAuthenticating()) << "left to whoever replaced it";
        store.cancelAuthentication();
    }

    visit();
    await(store.changeServer(home));
    comeBack();
    expectGuest("after a change of server");
    EXPECT_TRUE(token(home).isNull());
    EXPECT_EQ(store.notice(), std::nullopt);
}

TEST_F(WebSessions, aMembershipPageOpensOnceAndOnlyIfItIsOne) {
    const auto page = GoogleAuthorization::accountOrigin() + path(Endpoint::googleWebSession) +
                      u"?code="_s + code;
    const auto body = [](const QString &url) { return u"{\"url\":\"%1\"}"_s.arg(url).toUtf8(); };
    await(store.openMembership(u"yearly"_s));
    signIn(u"ada"_s);
    for (const auto &plan : {u""_s, u"weekly"_s, u"Yearly"_s})
        await(store.openMembership(plan));
    EXPECT_EQ(sent(Endpoint::webSession), 0);

    const struct {
        const char *name;
        QByteArray body;
        bool browser = true;
        std::optional<QString> notice;
    } cases[] = {
        {"a page", body(page), true, {}},
        {"another page", body(page + u"&lang=en"_s), true,
         words(URLError::Code::badServerResponse)},
        {"no browser", body(page), false, words(URLError::Code::cannotOpenFile)},
    };
    for (const auto &one : cases) {
        store.dismissNotice();
        system.browser.setWorking(one.browser);
        auto opening = store.openMembership(u"monthly"_s);
        EXPECT_TRUE(store.isOpeningMembership());
        await(store.openMembership(u"yearly"_s));
        EXPECT_EQ(waiting(Endpoint::webSession), 1) << one.name;
        answer(Endpoint::webSession, 200, one.body);
        await(std::move(opening));
        EXPECT_EQ(store.notice(), one.notice) << one.name;
        EXPECT_FALSE(store.isOpeningMembership()) << one.name;
    }
    EXPECT_EQ(system.browser.opened(), (QList{QUrl(page), QUrl(page)}));
    const auto sentBody = QJsonDocument::fromJson(*system.transport.requests().back().body);
    EXPECT_EQ(sentBody.object(), (QJsonObject{{u"lang"_s, u"en"_s}, {u"plan"_s, u"monthly"_s}}));
}

TEST_F(WebSessions, aMembershipReplyAfterASignOutOpensAndSaysNothing) {
    for (const int status : {200, 500}) {
        signIn(u"ada"_s);
        auto opening = store.openMembership(u"yearly"_s);
        await(store.logout());
        answer(Endpoint::webSession, status, R"({"url":"https://example.com"})");
        await(std::move(opening));
        EXPECT_TRUE(system.browser.opened().isEmpty());
        EXPECT_EQ(store.notice(), std::nullopt);
        EXPECT_FALSE(store.isOpeningMembership());
    }
}
