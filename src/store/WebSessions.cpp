// What leaves the program for a web page: the sign-in with Google, and the membership.
#include "BuildSettings.h"
#include "platform/Browser.h"
#include "platform/Clock.h"
#include "platform/CredentialStore.h"
#include "platform/Start.h"
#include "platform/URLError.h"
#include "service/Endpoints.h"
#include "signin/MembershipSession.h"
#include "store/AppStore.h"

namespace {

bool isPlan(const QString &plan) {
    return plan == QLatin1String("monthly") || plan == QLatin1String("yearly");
}

void openMembershipPage(Browser &browser, const QString &address) {
    const auto url = MembershipSession::validURL(address);
    if (!url)
        throw URLError(URLError::Code::badServerResponse);
    if (!browser.open(*url))
        throw URLError(URLError::Code::cannotOpenFile);
}

} // namespace

bool AppStore::isGoogleAvailable() const {
    auto base = API::validBase(m_baseString).value_or(QString());
    if (base.endsWith(QLatin1Char('/')))
        base.chop(1);
    const QString host = QUrl(QLatin1String(BuildSettings::publicSite)).host();
    const QString site = QLatin1String("https://") + host;
    return base == site || base == site + QLatin1String(":443");
}

void AppStore::loginWithGoogle() {
    if (!isGoogleAvailable() || m_authenticating)
        return;
    beginAuthentication();
    publish(m_googleAuthenticating, true, &AppStore::googleAuthenticatingChanged);
    m_authTask = std::stop_source();
    start(*this, [this, marker = Marker(m_generation), run = Marker(m_authenticationRun),
                  server = m_baseString, language = locale(), stop = m_authTask.get_token()] {
        return runGoogleLogin(marker, run, server, language, stop);
    });
}

Task<void> AppStore::runGoogleLogin(Marker<> marker, Marker<> run, QString server, QString language,
                                    std::stop_token stop) {
    try {
        auto trading = googleLogin(marker, server, language, stop);
        const Login login = co_await trading;
        acceptLogin(login, marker, server);
    } catch (const CancellationError &) {
    } catch (...) {
        if (marker.holds() && !stop.stop_requested())
            setNotice(describe(std::current_exception()));
    }
    if (marker.holds() && run.holds())
        endAuthentication();
}

Task<Login> AppStore::googleLogin(Marker<> marker, QString server, QString language,
                                  std::stop_token stop) {
    // A locked keyring has to be opened before there is a token to put into it.
    auto preparing = m_platform.credentials.prepare();
    co_await preparing;
    if (!marker.holds())
        throw CancellationError();
    const GoogleAuthorization authorization(m_platform.random, m_platform.clock.now());
    auto authorizing = m_googleSignIn.authorize(authorization, language, stop);
    const QString code = co_await authorizing;
    if (!marker.holds() || m_baseString != server)
        throw CancellationError();
    const API service(GoogleAuthorization::accountOrigin(), std::nullopt, m_platform.transport);
    auto asking = service.call<Login>(authorization.tokenRequest(code), stop);
    const Login login = co_await asking;
    if (stop.stop_requested())
        throw CancellationError();
    co_return login;
}

Task<void> AppStore::openMembership(QString plan) {
    if (!m_account || m_openingMembership || !isPlan(plan))
        co_return;
    const Marker marker(m_generation);
    const QString key = libraryKey();
    const API service = api();
    publish(m_openingMembership, true, &AppStore::openingMembershipChanged);
    try {
        const QJsonObject body{{QStringLiteral("lang"), locale()}, {QStringLiteral("plan"), plan}};
        auto asking = service.post<WebSession>(Endpoint::webSession, body, {});
        const WebSession session = co_await asking;
        if (marker.holds() && libraryKey() == key)
            openMembershipPage(m_platform.browser, session.url);
    } catch (...) {
        if (marker.holds() && libraryKey() == key)
            setNotice(describe(std::current_exception()));
    }
    if (marker.holds())
        publish(m_openingMembership, false, &AppStore::openingMembershipChanged);
}

void AppStore::beginOpenMembership(const QString &plan) {
    start(*this, [this, plan] { return openMembership(plan); });
}
