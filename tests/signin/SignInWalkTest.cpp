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
#include "tests/support/LocalServiceProcess.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/TestPlatform.h"

#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QUrlQuery>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const auto site = QString::fromLatin1(BuildSettings::publicSite);
const auto name = u"chat.quillmere.walk"_s;

/// The local service under the true names of the public service and of its account pages.
QUrl routed(const QUrl &url, const LocalServiceProcess &service) {
    auto text = url.toString(QUrl::FullyEncoded);
    for (const auto &origin : {GoogleAuthorization::accountOrigin(), site}) {
        if (text.startsWith(origin + u'/'))
            text.replace(0, origin.size(), service.base());
    }
    return QUrl(text, QUrl::StrictMode);
}

class RoutedTransport final : public Transport {
public:
    const LocalServiceProcess *service = nullptr;
    /// Every request as it was meant.
    std::vector<HttpRequest> requests;

    [[nodiscard]] Task<HttpResponse> data(HttpRequest request, std::stop_token stop) override {
        return m_transport.data(route(std::move(request)), std::move(stop));
    }
    [[nodiscard]] Task<std::unique_ptr<ByteStream>> stream(HttpRequest request,
                                                           std::stop_token stop) override {
        return m_transport.stream(route(std::move(request)), std::move(stop));
    }

private:
    HttpRequest route(HttpRequest request) {
        requests.push_back(request);
        request.url = routed(request.url, *service);
        return request;
    }

    QtTransport m_transport;
};

/// A person before a web browser, on a page with a form.
class Person final : public Browser {
public:
    explicit Person(const LocalServiceProcess &service) : m_service(service) {}

    bool open(const QUrl &url) override {
        m_page = url;
        ++m_visits;
        return true;
    }
    int visits() const { return m_visits; }

    /// Fills in the page and presses the button: the address that this leads to.
    QString press(const QString &button) {
        const auto page = routed(m_page, m_service);
        const auto text = QString::fromUtf8(finished(m_browser.get(QNetworkRequest(page))));
        QUrlQuery form;
        static const QRegularExpression hidden(
            u"<input type=\"hidden\" name=\"([^\"]*)\" value=\"([^\"]*)\">"_s);
        for (const auto &field : hidden.globalMatch(text))
            form.addQueryItem(field.captured(1), field.captured(2));
        form.addQueryItem(u"handle"_s, u"Ada"_s);
        form.addQueryItem(u"password"_s, u"correct-horse"_s);
        form.addQueryItem(u"choice"_s, button);

        static const QRegularExpression action(u"action=\"([^\"]*)\""_s);
        QNetworkRequest request(page.resolved(QUrl(action.match(text).captured(1))));
        request.setHeader(QNetworkRequest::ContentTypeHeader,
                          u"application/x-www-form-urlencoded"_s);
        request.setRawHeader("Origin", m_service.base().toLatin1());
        request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                             QNetworkRequest::ManualRedirectPolicy);
        auto *reply = m_browser.post(request, form.toString(QUrl::FullyEncoded).toUtf8());
        finished(reply);
        return QString::fromLatin1(reply->rawHeader("Location"));
    }

private:
    static QByteArray finished(QNetworkReply *reply) {
        EXPECT_TRUE(eventually([&] { return reply->isFinished(); }));
        return reply->readAll();
    }

    const LocalServiceProcess &m_service;
    QNetworkAccessManager m_browser;
    QUrl m_page;
    int m_visits = 0;
};

class SignInWalk : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(bus.start());
        ASSERT_TRUE(service.start());
        desktop = QDBusConnection::connectToBus(bus.address(), u"desktop"_s);
        system.transport.service = &service;
        system.preferences.setValue(u"server"_s, site);
        store = std::make_unique<AppStore>(
            Platform{system.transport, system.preferences, system.clock, person, system.appearance,
                     system.files, system.credentials, random, session});
        instance = std::make_unique<RunningInstance>(
            QDBusConnection::connectToBus(bus.address(), u"program"_s), name);
        QObject::connect(
            instance.get(), &RunningInstance::called, instance.get(),
            [this](const QStringList &addresses) { session.deliver(addresses.first()); });
        ASSERT_EQ(await(instance->claim()), RunningInstance::Standing::first);
    }
    void TearDown() override {
        if (store)
            await(store->logout());
        settleEventLoop();
        for (const auto *connection : {"desktop", "program"})
            QDBusConnection::disconnectFromBus(QLatin1String(connection));
    }

    /// The desktop hands an address of the program's scheme over, and the program has taken it.
    void handOver(const QString &address) {
        auto call = QDBusMessage::createMethodCall(name, u"/chat/quillmere/walk"_s,
                                                   u"org.freedesktop.Application"_s, u"Open"_s);
        call << QStringList{address} << QVariantMap();
        const QDBusPendingCallWatcher calling(desktop.asyncCall(call));
        ASSERT_TRUE(eventually([&] { return calling.isFinished(); }));
        settleEventLoop();
    }
    void begin() {
        const auto before = person.visits();
        store->loginWithGoogle();
        ASSERT_TRUE(eventually([&] { return person.visits() == before + 1; }));
    }
    bool settled() {
        return eventually([this] { return !store->isAuthenticating(); });
    }
    qsizetype trades() const {
        return std::count_if(system.transport.requests.begin(), system.transport.requests.end(),
                             [](const HttpRequest &request) {
                                 return request.url.path().endsWith(Endpoint::googleToken);
                             });
    }

    PrivateBus bus;
    LocalServiceProcess service;
    Person person{service};
    DesktopBrowserSession session{person};
    SystemRandom random;
    QDBusConnection desktop{QString()};
    TestPlatform<RoutedTransport> system;
    std::unique_ptr<AppStore> store;
    std::unique_ptr<RunningInstance> instance;
};

} // namespace

TEST_F(SignInWalk, fromTheButtonThroughBrowserAndDesktopToTheAccountAndBack) {
    begin();
    const auto address = person.press(u"create"_s);
    handOver(address);
    ASSERT_TRUE(eventually([this] { return store->isQuotaKnown() || store->notice(); }));
    EXPECT_EQ(store->notice(), std::nullopt);
    EXPECT_EQ(store->accountRecord().user.handle, u"Ada"_s);
    ASSERT_EQ(system.credentials.secrets().size(), 1);
    const auto token = system.credentials.secrets().constBegin().value();
    for (const auto &request : system.transport.requests) {
        const auto text = request.url.toString();
        if (text.startsWith(site + u'/')) {
            EXPECT_EQ(request.headers.front().second, "Bearer " + token) << qPrintable(text);
        } else {
            EXPECT_EQ(request.headers.size(), 1U) << "no token to " << qPrintable(text);
        }
    }

    handOver(address);
    EXPECT_EQ(trades(), 1) << "nobody waits for a second callback";
    EXPECT_EQ(store->accountRecord().user.handle, u"Ada"_s);

    await(store->logout());
    EXPECT_EQ(store->notice(), std::nullopt) << "the service has confirmed it";
    EXPECT_TRUE(system.credentials.secrets().isEmpty());

    begin();
    handOver(person.press(u"sign-in"_s));
    ASSERT_TRUE(eventually([this] { return store->isQuotaKnown(); }));
    EXPECT_EQ(store->accountRecord().user.handle, u"Ada"_s);
}

TEST_F(SignInWalk, whatNobodyWaitsForChangesNothing) {
    handOver(u"quillmere-mac://auth/google?state=early&code="_s + QString(64, u'c'));
    begin();
    handOver(person.press(u"decline"_s));
    ASSERT_TRUE(settled());
    EXPECT_EQ(store->notice(), std::nullopt);

    begin();
    const auto late = person.press(u"create"_s);
    store->cancelAuthentication();
    EXPECT_FALSE(store->isAuthenticating());
    handOver(late);
    EXPECT_FALSE(store->isAuthenticating() || store->isSignedIn());

    // A code of the attempt before, in the middle of the next one, ends that one.
    begin();
    handOver(late);
    ASSERT_TRUE(settled());
    EXPECT_TRUE(store->notice());
    EXPECT_FALSE(store->isSignedIn());
    EXPECT_EQ(trades(), 0);
}
