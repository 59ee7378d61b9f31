#include "BuildSettings.h"
#include "platform/Browser.h"
#include "platform/ByteStream.h"
#include "platform/DesktopBrowserSession.h"
#include "platform/QtTransport.h"
#include "platform/RunningInstance.h"
#include "platform/SystemRandom.h"
#include "service/Endpoints.h"
#include "store/AppStore.h"
#include "tests/support/Await.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/ScriptedService.h"
#include "tests/support/TestPlatform.h"

#include <QCryptographicHash>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QJsonDocument>
#include <QJsonObject>
#include <QUrlQuery>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const auto site = QString::fromLatin1(BuildSettings::publicSite);
const QString code(64, u'c');
const auto name = u"chat.quillmere.walk"_s;

/// Real requests that reach the services of this test under their true names.
class RoutedTransport final : public Transport {
public:
    void route(const QString &origin, const QString &service) { m_routes.insert(origin, service); }

    [[nodiscard]] Task<HttpResponse> data(HttpRequest request, std::stop_token stop) override {
        return m_transport.data(routed(std::move(request)), std::move(stop));
    }
    [[nodiscard]] Task<std::unique_ptr<ByteStream>> stream(HttpRequest request,
                                                           std::stop_token stop) override {
        return m_transport.stream(routed(std::move(request)), std::move(stop));
    }

private:
    HttpRequest routed(HttpRequest request) const {
        auto text = request.url.toString(QUrl::FullyEncoded);
        for (auto route = m_routes.cbegin(); route != m_routes.cend(); ++route) {
            if (text.startsWith(route.key() + u'/'))
                text.replace(0, route.key().size(), route.value());
        }
        request.url = QUrl(text, QUrl::StrictMode);
        return request;
    }

    QtTransport m_transport;
    QHash<QString, QString> m_routes;
};

/// A person who is signed in with Google already: the page sends the browser straight back, and the
/// desktop hands the address over on the bus.
class QuickPerson final : public Browser {
public:
    explicit QuickPerson(const QDBusConnection &bus) : m_bus(bus) {}

    bool open(const QUrl &url) override {
        m_start = QUrlQuery(url);
        answer(u"quillmere-mac://auth/google?code=%1&state=%2"_s.arg(code, item(u"state"_s)));
        return true;
    }
    void answer(const QString &address) {
        auto call = QDBusMessage::createMethodCall(name, u"/chat/quillmere/walk"_s,
                                                   u"org.freedesktop.Application"_s, u"Open"_s);
        call << QStringList{address} << QVariantMap();
        m_bus.asyncCall(call);
    }
    QString item(const QString &key) const { return m_start.queryItemValue(key); }

private:
    QDBusConnection m_bus;
    QUrlQuery m_start;
};

} // namespace

TEST(SignInWalk, fromTheButtonThroughBrowserAndDesktopToTheAccount) {
    PrivateBus bus;
    ASSERT_TRUE(bus.start());
    QuickPerson person(QDBusConnection::connectToBus(bus.address(), u"desktop"_s));
    ScriptedService accounts;
    accounts.expect("POST", u"/google/native/token"_s,
                    ScriptedAnswer::reply(
                        200, R"({"token":"app_1","user":{"id":"1","handle":"ada"},"plan":"pro"})"));
    ScriptedService service;
    service.always("GET", u"/v1/wall"_s, ScriptedAnswer::reply(200, R"({"items":[]})"));
    service.always("GET", u"/v1/account/quota"_s,
                   ScriptedAnswer::reply(200, R"({"plan":"pro","used":1,"limit":5})"));

    TestPlatform<RoutedTransport> system;
    auto &[transport, preferences, clock, unused, appearance, files, credentials, unusedRandom,
           unusedSession] = system;
    transport.route(GoogleAuthorization::accountOrigin(), accounts.base());
    transport.route(site, service.base());
    preferences.setValue(u"server"_s, site);
    DesktopBrowserSession session(person);
    SystemRandom random;
    AppStore store(Platform{transport, preferences, clock, person, appearance, files, credentials,
                            random, session});
    RunningInstance instance(QDBusConnection::connectToBus(bus.address(), u"program"_s), name);
    int calls = 0;
    QObject::connect(&instance, &RunningInstance::called, &instance,
                     [&](const QStringList &addresses) {
                         ++calls;
                         session.deliver(addresses.first());
                     });
    ASSERT_EQ(await(instance.claim()), RunningInstance::Standing::first);

    person.answer(u"quillmere-mac://auth/google?code=%1&state=early"_s.arg(code));
    ASSERT_TRUE(eventually([&] { return calls == 1; }));
    store.loginWithGoogle();
    ASSERT_TRUE(eventually([&] { return store.isSignedIn() || store.notice(); }));
    EXPECT_EQ(store.notice(), std::nullopt);
    EXPECT_EQ(store.accountRecord().user.handle, u"ada"_s);
    ASSERT_TRUE(eventually([&] { return store.isQuotaKnown(); }));
    EXPECT_EQ(service.requests().back().values("Authorization"), QList<QByteArray>{"Bearer app_1"});
    const auto &trade = accounts.requests().front();
    EXPECT_TRUE(trade.values("Authorization").isEmpty());
    const auto body = QJsonDocument::fromJson(trade.body).object();
    EXPECT_EQ(body[u"code"_s], code);
    const auto verifier = body[u"code_verifier"_s].toString().toLatin1();
    EXPECT_EQ(QCryptographicHash::hash(verifier, QCryptographicHash::Sha256)
                  .toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals),
              person.item(u"code_challenge"_s).toLatin1());

    person.answer(
        u"quillmere-mac://auth/google?code=%1&state=%2"_s.arg(code, person.item(u"state"_s)));
    ASSERT_TRUE(eventually([&] { return calls == 3; }));
    settleEventLoop();
    EXPECT_EQ(accounts.requests().size(), 1) << "nobody waits for a second callback";

    service.expect("POST", u"/v1/account/logout"_s, ScriptedAnswer::reply(200, "{}"));
    await(store.logout());
    settleEventLoop();
    for (const auto *connection : {"desktop", "program"})
        QDBusConnection::disconnectFromBus(QLatin1String(connection));
}
