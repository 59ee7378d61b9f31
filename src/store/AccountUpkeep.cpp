// What keeps a signed-in account current.
#include "platform/CredentialStore.h"
#include "platform/Start.h"
#include "service/Endpoints.h"
#include "storage/ProfileCache.h"
#include "storage/TokenVault.h"
#include "store/AppStore.h"

namespace {

const QString action = QStringLiteral("action");
const QString email = QStringLiteral("email");

} // namespace

void AppStore::keepAccount(const Account &account) {
    setAccount(account);
    if (const auto token = TokenVault::read(m_platform.credentials, m_baseString))
        ProfileCache::put(m_platform.files, account, m_baseString, *token);
}

Task<void> AppStore::refreshAccount(bool showError) {
    if (!m_account || m_refreshingAccount)
        co_return;
    const Marker marker(m_generation);
    publish(m_refreshingAccount, true, &AppStore::refreshingAccountChanged);
    auto fetching = fetchAccount(showError);
    co_await fetching;
    if (marker.holds())
        publish(m_refreshingAccount, false, &AppStore::refreshingAccountChanged);
}

Task<void> AppStore::fetchAccount(bool showError) {
    const Marker marker(m_generation);
    const QString key = libraryKey();
    const API service = api();
    std::optional<Account> reply;
    try {
        auto asking = service.get<Account>(Endpoint::me, {}, {});
        reply = co_await asking;
    } catch (...) {
        // Whatever the reason, nobody is signed out.
    }
    if (!marker.holds() || libraryKey() != key)
        co_return;
    if (!reply && showError)
        setNotice(text(QStringLiteral("loadFailed")));
    // Only the signed-in user's own account is news.
    if (!reply || !m_account || m_account->user.id != reply->user.id)
        co_return;
    if (m_account->plan != reply->plan)
        publish(m_quota, {}, &AppStore::quotaChanged);
    keepAccount(*reply);
    auto refreshing = refreshQuota();
    co_await refreshing;
}

void AppStore::beginRefreshAccount(bool showError) {
    start(*this, [this, showError] { return refreshAccount(showError); });
}

Task<void> AppStore::refreshQuota() {
    if (!m_account) {
        publish(m_quota, {}, &AppStore::quotaChanged);
        co_return;
    }
    const QString key = libraryKey();
    const API service = api();
    try {
        auto asking = service.get<Quota>(Endpoint::quota, {}, {});
        const Quota quota = co_await asking;
        if (libraryKey() == key)
            publish(m_quota, quota, &AppStore::quotaChanged);
    } catch (...) {
        // The last word of the service is better than none.
    }
}

void AppStore::beginRefreshQuota() {
    start(*this, [this] { return refreshQuota(); });
}

Task<void> AppStore::updateProfile(QJsonObject body) {
    const Marker marker(m_generation);
    const QString key = libraryKey();
    const QString done = body.value(action).toString();
    const bool deletes = done == QLatin1String("delete");
    if (deletes) {
        // A keyring that is locked or hangs is waited for here, and not once the account is gone.
        auto preparing = m_platform.credentials.prepare();
        co_await preparing;
        if (!marker.holds() || libraryKey() != key)
            throw CancellationError();
    }
    const API service = api();
    auto saving = service.post<Acknowledgement>(Endpoint::profile, body, {});
    co_await saving;
    if (!marker.holds() || libraryKey() != key)
        throw CancellationError();

    if (deletes) {
        cancelAuthentication();
        TokenVault::set(m_platform.credentials, std::nullopt, m_baseString);
        changeIdentity(std::nullopt);
        co_return;
    }

    std::optional<Account> reply;
    try {
        auto asking = service.get<Account>(Endpoint::me, {}, {});
        reply = co_await asking;
    } catch (...) {
        // The change itself has been saved.
    }
    if (!marker.holds() || libraryKey() != key)
        throw CancellationError();
    if (!reply || !m_account || m_account->user.id != reply->user.id) {
        setNotice(text(QStringLiteral("profileSavedRefreshFailed")));
        co_return;
    }
    keepAccount(*reply);
    if (done == email)
        setNotice(text(QStringLiteral("emailChanged")));
}

Task<bool> AppStore::resendVerification() {
    if (!m_account || !m_account->user.email)
        co_return false;
    const QJsonObject body{{action, email}, {email, *m_account->user.email}};
    const API service = api();
    auto asking = service.post<VerificationReply>(Endpoint::profile, body, {});
    const VerificationReply reply = co_await asking;
    co_return reply.verificationSent.value_or(false);
}
