#include "BuildSettings.h"
#include "platform/URLError.h"
#include "signin/GoogleAuthorization.h"
#include "tests/store/AccountTest.h"

using namespace Qt::StringLiterals;

namespace {

const auto site = QString::fromLatin1(BuildSettings::publicSite);
const QString code(64, u'c');

QString words(URLError::Code kind) {
    return URLError(kind).localizedDescription();
}

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
    void comeBack(const QString &rest = u"&code="_s + code) {
        const auto query = system.browserSession.started().last().query();
        const auto state = query.mid(query.indexOf(u"state="_s)).section(u'&', 0, 0);
        system.browserSession.callbacks().last().succeed(u"quillmere-mac://auth/google?"_s + state +
                                                         rest);
        settleEventLoop();
    }
    void trade(int status, const QByteArray &body) {
        comeBack();
        answer(Endpoint::googleToken, status, body);
        settleEventLoop();
    }
    void expectGuest(const char *when) {
        EXPECT_FALSE(store.isAuthenticating() || store.isGoogleAuthenticating()) << when;
        EXPECT_FALSE(store.isSignedIn()) << when;
        EXPECT_TRUE(token(site).isNull()) << when;
    }
};

} // namespace

TEST_F(WebSessions, googleIsThereOnThePublicServiceAlone) {
    const auto host = QUrl(site).host();
    const std::pair<QString, bool> cases[] = {
        {u"https://"_s + host, true},
        {u"https://"_s + host + u":443/"_s, true},
        {u"https://"_s + host + u":8443"_s, false},
        {u"http://"_s + host, false},
        {u"http://"_s + host + u":443"_s, false},
        {u"https://www."_s + host, false},
        {u"https://"_s + host + u"/v1"_s, false},
        {home, false},
    };
    for (const auto &[base, available] : cases) {
        system.preferences.setValue(u"server"_s, base);
        AppStore elsewhere(system.platform());
        EXPECT_EQ(elsewhere.isGoogleAvailable(), available) << qPrintable(base);
        elsewhere.loginWithGoogle();
        EXPECT_EQ(elsewhere.isAuthenticating(), available) << qPrintable(base);
    }
}

TEST_F(WebSessions, oneGoogleLoginSignsInOnTheServerThatItBeganWith) {
    visit();
    store.loginWithGoogle();
    await(store.login(u"ada"_s, u"secret"_s));
    trade(200, loginBody(u"ada"_s));
    EXPECT_EQ(visits(), 1);
    EXPECT_EQ(sent(Endpoint::login), 0);
    EXPECT_EQ(user(), u"ada"_s);
    EXPECT_EQ(token(site), tokenOf(u"ada"_s));
    EXPECT_FALSE(store.isAuthenticating() || store.isGoogleAuthenticating());
    EXPECT_EQ(store.notice(), std::nullopt);
}

TEST_F(WebSessions, aGoogleLoginThatFailsSaysWhyAndLeavesAGuest) {
    const struct {
        std::function<void()> happen;
        std::optional<QString> notice;
    } cases[] = {
        {[&] { comeBack(u"&error=access_denied"_s); }, {}},
        {[&] { comeBack({}); }, words(URLError::Code::badServerResponse)},
        {[&] { trade(400, R"({"error":"bad_code","message":"Late."})"); }, u"Late."_s},
        {[&] { trade(200, loginBody(u"ada"_s).replace("app_", "web_")); },
         words(URLError::Code::badServerResponse)},
    };
    for (const auto &one : cases) {
        store.dismissNotice();
        visit();
        one.happen();
        EXPECT_EQ(store.notice(), one.notice);
        expectGuest("after a failure");
    }
    system.browserSession.setWorking(false);
    visit();
    settleEventLoop();
    EXPECT_EQ(store.notice(), words(URLError::Code::cannotLoadFromNetwork));
    system.random.exhaust();
    store.loginWithGoogle();
    settleEventLoop();
    EXPECT_EQ(store.notice(), words(URLError::Code::cannotCreateFile));
    expectGuest("without random bytes");
}

TEST_F(WebSessions, aCancelledGoogleLoginEndsWithoutAWordWhereverItIs) {
    system.credentials.lock();
    store.loginWithGoogle();
    settleEventLoop();
    store.cancelAuthentication();
    system.credentials.unlock();
    store.loginWithGoogle();
    store.cancelAuthentication();
    settleEventLoop();
    EXPECT_EQ(visits(), 0) << "neither before the keyring is open nor before the first step";

    for (const bool traded : {false, true}) {
        visit();
        if (traded)
            comeBack();
        store.cancelAuthentication();
        expectGuest("at once");
        auto newer = store.login(u"ada"_s, u"secret"_s);
        comeBack();
        EXPECT_TRUE(store.isAuthenticating()) << "that is the newer login's";
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
        comeBack();
        EXPECT_EQ(waiting(Endpoint::googleToken), 0);
        EXPECT_TRUE(store.isAuthenticating()) << "left to whoever replaced the generation";
        store.cancelAuthentication();
        expectGuest("outlived");
    }
    visit();
    await(store.changeServer(home));
    comeBack();
    expectGuest("on another server");
    EXPECT_EQ(store.notice(), std::nullopt);
}

TEST_F(WebSessions, aMembershipPageOpensOnlyForItsAccountAndOnlyIfItIsOne) {
    const auto page = GoogleAuthorization::accountOrigin() + path(Endpoint::googleWebSession) +
                      u"?code="_s + code;
    await(store.openMembership(u"yearly"_s));
    signIn(u"ada"_s);
    await(store.openMembership(u"weekly"_s));
    EXPECT_EQ(sent(Endpoint::webSession), 0);

    const struct {
        QString url;
        bool browser;
        bool signedOut;
        std::optional<QString> notice;
    } cases[] = {
        {page, true, false, {}},
        {page + u"&lang=en"_s, true, false, words(URLError::Code::badServerResponse)},
        {page, false, false, words(URLError::Code::cannotOpenFile)},
        {page, true, true, {}},
        {u"https://example.com"_s, true, true, {}},
    };
    for (const auto &one : cases) {
        if (!store.isSignedIn())
            signIn(u"ada"_s);
        store.dismissNotice();
        system.browser.setWorking(one.browser);
        auto opening = store.openMembership(u"monthly"_s);
        await(store.openMembership(u"yearly"_s));
        EXPECT_EQ(waiting(Endpoint::webSession), 1);
        EXPECT_EQ(*system.transport.requests().back().body, R"({"lang":"en","plan":"monthly"})");
        EXPECT_TRUE(store.isOpeningMembership());
        if (one.signedOut)
            await(store.logout());
        answer(Endpoint::webSession, 200, "{\"url\":\"" + one.url.toLatin1() + "\"}");
        await(std::move(opening));
        EXPECT_EQ(store.notice(), one.notice);
        EXPECT_FALSE(store.isOpeningMembership());
    }
    EXPECT_EQ(system.browser.opened(), (QList{QUrl(page), QUrl(page)}));
}
