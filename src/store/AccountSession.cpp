// How a signed-in state begins and ends.
#include "platform/CredentialStore.h"
#include "platform/Preferences.h"
#include "platform/Start.h"
#include "platform/URLError.h"
#include "service/Endpoints.h"
#include "storage/ProfileCache.h"
#include "storage/TokenVault.h"
#include "store/AppStore.h"

namespace {

const QString device = QStringLiteral("Quillmere for Mac");
const QLatin1String tokenPrefix("app_");

const QString unusableAddress =
    QStringLiteral("Use an HTTPS server address, or HTTP on localhost.");
const QString notConfirmed =
    QStringLiteral("Signed out on this Mac. The service could not confirm remote sign-out.");

} // namespace

void AppStore::beginAuthentication() {
    m_authenticationRun = Identifier::make();
    publish(m_authenticating, true, &AppStore::authenticatingChanged);
}

void AppStore::endAuthentication() {
    publish(m_authenticating, false, &AppStore::authenticatingChanged);
    publish(m_googleAuthenticating, false, &AppStore::googleAuthenticatingChanged);
}

Task<void> AppStore::login(QString handle, QString password) {
    if (m_authenticating)
        co_return;
    beginAuthentication();
    const Marker marker(m_generation);
    const Marker run(m_authenticationRun);
    const QString server = m_baseString;
    const API service = api();
    std::exception_ptr failure;
    try {
        // A locked keyring has to be opened before there is a token to put into it.
        auto preparing = m_platform.credentials.prepare();
        co_await preparing;
        if (!marker.holds())
            throw CancellationError();
        const QJsonObject body{{QStringLiteral("handle"), handle},
                               {QStringLiteral("password"), password},
                               {QStringLiteral("device"), device}};
        auto asking = service.post<Login>(Endpoint::login, body, {});
        const Login reply = co_await asking;
        acceptLogin(reply, marker, server);
    } catch (...) {
        failure = std::current_exception();
    }
    if (marker.holds() && run.holds())
        endAuthentication();
    if (failure)
        std::rethrow_exception(failure);
}

void AppStore::acceptLogin(const Login &login, const Marker<> &marker, const QString &server) {
    if (!marker.holds() || m_baseString != server)
        throw CancellationError();
    if (!login.token.startsWith(tokenPrefix) || login.user.id.isEmpty())
        throw URLError(URLError::Code::badServerResponse);
    TokenVault::set(m_platform.credentials, login.token, server);
    changeIdentity(login);
}

void AppStore::changeIdentity(const std::optional<Login> &login) {
    stopChat();
    cancelSync();
    replaceGeneration();
    endAuthentication();
    setAccount(login ? std::optional(login->account()) : std::nullopt);
    if (login)
        ProfileCache::put(m_platform.files, login->account(), m_baseString, login->token);
    openEmptyChat();
    loadLibrary();
    // A connection that was under way publishes nothing any more, but the catalogue is still
    // wanted.
    if (m_connecting)
        beginConnect();
}

void AppStore::cancelAuthentication() {
    m_googleSignIn.cancel();
    m_authTask.request_stop();
    endAuthentication();
}

Task<void> AppStore::logout() {
    cancelAuthentication();
    const Marker identity(m_generation);
    // A keyring that is locked or hangs is waited for here, and not in the middle of a step.
    auto preparing = m_platform.credentials.prepare();
    co_await preparing;
    if (!identity.holds())
        co_return;
    const API service = api();
    try {
        TokenVault::set(m_platform.credentials, std::nullopt, m_baseString);
    } catch (...) {
        setNotice(describe(std::current_exception()));
        co_return;
    }
    changeIdentity(std::nullopt);

    const Marker marker(m_generation);
    try {
        auto asking = service.post<Acknowledgement>(Endpoint::logout, {}, {});
        co_await asking;
    } catch (...) {
        if (marker.holds())
            setNotice(notConfirmed);
    }
}

void AppStore::beginLogout() {
    start(*this, [this] { return logout(); });
}

Task<void> AppStore::changeServer(QString value) {
    if (!API::validBase(value)) {
        setNotice(unusableAddress);
        co_return;
    }
    cancelAuthentication();
    stopChat();
    cancelSync();
    replaceGeneration();
    setAccount(std::nullopt);
    setLibrary({});
    publish(m_health, {}, &AppStore::healthChanged);
    setArchives({});
    publish(m_baseString, value, &AppStore::baseStringChanged);
    m_platform.preferences.setValue(QStringLiteral("server"), value);
    openEmptyChat();
    loadLibrary();
    auto connecting = connect();
    co_await connecting;
}

void AppStore::beginChangeServer(const QString &value) {
    start(*this, [this, value] { return changeServer(value); });
}
