// From the first window to a connected service.
#include "platform/CredentialStore.h"
#include "platform/Start.h"
#include "service/Endpoints.h"
#include "service/ServiceError.h"
#include "storage/ProfileCache.h"
#include "storage/TokenVault.h"
#include "store/AppStore.h"

namespace {

const QString notChecked = QStringLiteral(
    "Your login could not be checked. Try again when the account service is available.");

/// Two requests of which the first failure ends both.
struct Siblings {
    std::stop_source stop;
    std::exception_ptr failure;
};

/// Awaits one of them. A failure is kept, the first one only, and cancels the other.
template <class Result>
Task<std::optional<Result>> sibling(Task<Result> task, std::shared_ptr<Siblings> siblings) {
    try {
        Result result = co_await task;
        co_return result;
    } catch (...) {
        if (!siblings->failure)
            siblings->failure = std::current_exception();
        siblings->stop.request_stop();
    }
    co_return std::nullopt;
}

} // namespace

Task<AppStore::Catalogue> AppStore::fetchCatalogue(API api, QString locale) {
    const auto siblings = std::make_shared<Siblings>();
    const auto stop = siblings->stop.get_token();
    const std::vector<QueryItem> query{{QStringLiteral("locale"), locale}};

    auto healthTask = sibling(api.get<Health>(Endpoint::health, {}, stop), siblings);
    auto archivesTask = sibling(api.get<Items<Archive>>(Endpoint::archives, query, stop), siblings);
    auto health = co_await healthTask;
    auto archives = co_await archivesTask;
    if (siblings->failure)
        std::rethrow_exception(siblings->failure);
    co_return Catalogue{*health, archives->items};
}

Task<void> AppStore::connect() {
    const Marker marker(m_generation);
    setConnecting(true);
    // What is saved before the service has answered goes on top of what the file holds.
    if (!m_libraryLoaded)
        loadLibrary();
    auto preparing = m_platform.credentials.prepare();
    co_await preparing;
    if (!marker.holds())
        co_return;

    const bool restored = restoreAccount();
    const API service(requestBase(), TokenVault::read(m_platform.credentials, m_baseString),
                      m_platform.transport);
    std::exception_ptr failure;
    try {
        auto fetching = fetchCatalogue(service, locale());
        const Catalogue catalogue = co_await fetching;
        if (!marker.holds())
            co_return;
        publish(m_health, catalogue.health, &AppStore::healthChanged);
        setArchives(catalogue.archives);
        auto checking = checkAccount(service);
        co_await checking;
    } catch (...) {
        failure = std::current_exception();
    }
    if (!marker.holds())
        co_return;
    if (failure)
        setNotice(describe(failure));
    if (!failure || !restored)
        loadLibrary();
    setConnecting(false);
}

void AppStore::beginConnect() {
    start(*this, [this] { return connect(); });
}

bool AppStore::restoreAccount() {
    if (m_account)
        return false;
    const auto token = TokenVault::read(m_platform.credentials, m_baseString);
    if (!token)
        return false;
    const auto account = ProfileCache::get(m_platform.files, m_baseString, *token);
    if (!account)
        return false;
    setAccount(account);
    loadLibrary();
    return true;
}

Task<void> AppStore::checkAccount(API service) {
    if (!service.token())
        co_return;
    const Marker marker(m_generation);
    try {
        auto asking = service.get<Account>(Endpoint::me, {}, {});
        const Account account = co_await asking;
        // A token that stands for somebody else is nothing that was asked for.
        if (marker.holds() && (!m_account || m_account->user.id == account.user.id))
            keepAccount(account);
    } catch (const ServiceError &error) {
        if (!marker.holds())
            co_return;
        if (error.status == 401 || error.error == QLatin1String("signin_required"))
            endVoidLogin();
        else
            setNotice(notChecked);
    } catch (...) {
        if (marker.holds())
            setNotice(notChecked);
    }
}

void AppStore::endVoidLogin() {
    // In this order the open conversation still goes into the account's own library.
    stopChat();
    cancelSync();
    TokenVault::set(m_platform.credentials, std::nullopt, m_baseString);
    setAccount(std::nullopt);
    openEmptyChat();
}
