#include "screens/AccountModel.h"

#include "BuildSettings.h"
#include "platform/Start.h"
#include "service/Endpoints.h"

#include <QUrlQuery>

#include <algorithm>

void AccountModel::componentComplete() {
    m_email = m_store->accountRecord().user.emailText();
    connect(m_store, &AppStore::accountChanged, this, &AccountModel::takeAccount);
    connect(m_store, &AppStore::syncStatusChanged, this, &AccountModel::syncedChanged);
    connect(m_store, &AppStore::healthChanged, this, &AccountModel::addressesChanged);
    connect(m_store, &AppStore::wordsChanged, this, &AccountModel::addressesChanged);
    connect(m_store, &AppStore::wordsChanged, this, &AccountModel::languagesChanged);
    connect(m_store, &AppStore::languageChanged, this, &AccountModel::languageChanged);
    // Read before the store was there.
    Q_EMIT accountChanged();
    Q_EMIT syncedChanged();
    Q_EMIT addressesChanged();
    Q_EMIT languagesChanged();
    Q_EMIT languageChanged();
}

bool AccountModel::isPro() const {
    return m_store &&
           m_store->accountRecord().plan.compare(QLatin1String("pro"), Qt::CaseInsensitive) == 0;
}

void AccountModel::takeAccount() {
    const auto email = m_store->accountRecord().user.emailText();
    if (std::exchange(m_email, email) != email)
        setResend(m_resending, false);
    Q_EMIT accountChanged();
}

void AccountModel::setResend(bool resending, bool resent) {
    m_resending = resending;
    m_resent = resent;
    Q_EMIT resendChanged();
}

void AccountModel::beginResend() {
    if (m_resending)
        return;
    setResend(true, m_resent);
    start(*m_store, [model = QPointer(this), store = m_store] { return resend(model, store); });
}

Task<void> AccountModel::resend(QPointer<AccountModel> model, AppStore *store) {
    const QString key = store->libraryKey();
    bool sent = model && model->m_resent;
    try {
        auto asking = store->resendVerification();
        const bool reply = co_await asking;
        if (store->libraryKey() == key) {
            sent = reply;
            if (!sent)
                store->setNotice(store->text(QStringLiteral("acctUnverified")));
        }
    } catch (...) {
        if (store->libraryKey() == key)
            store->setNotice(store->describe(std::current_exception()));
    }
    if (model)
        model->setResend(false, sent);
}

bool AccountModel::isSynced() const {
    return !m_store || !m_store->syncStatus().startsWith(QLatin1String("Not synced:"));
}

void AccountModel::beginSync() {
    start(*m_store, [store = m_store] { return sync(store); });
}

Task<void> AccountModel::sync(AppStore *store) {
    auto syncing = store->syncLibrary();
    co_await syncing;
    auto refreshing = store->refreshWall();
    co_await refreshing;
}

QUrl AccountModel::accountSite(const QString &path) const {
    const auto named = m_store ? API::validBase(m_store->healthRecord().accountUrl) : std::nullopt;
    QString site = named.value_or(QLatin1String(BuildSettings::accountOrigin));
    if (!site.endsWith(QLatin1Char('/')))
        site += QLatin1Char('/');
    return QUrl(site + path);
}

QUrl AccountModel::registration() const {
    auto address = accountSite(Endpoint::googleRegister);
    QUrlQuery query;
    query.addQueryItem(
        QStringLiteral("lang"),
        AppLanguages::webCode(m_store ? m_store->effectiveLanguage() : AppLanguage::en));
    address.setQuery(query);
    return address;
}

QUrl AccountModel::accountPage() const {
    return accountSite(Endpoint::account);
}

QUrl AccountModel::legalPage(const QString &name) const {
    const auto code =
        AppLanguages::webCode(m_store ? m_store->effectiveLanguage() : AppLanguage::en);
    const auto folder = code == QLatin1String("zh") ? QStringLiteral("/zh") : QString();
    return QUrl(QLatin1String(BuildSettings::publicSite) + folder + QLatin1Char('/') + name +
                QLatin1Char('/'));
}

QString AccountModel::version() const {
    return QLatin1String(BuildSettings::version);
}

QStringList AccountModel::languages() const {
    QStringList names;
    for (const auto language : AppLanguages::allCases)
        names.append(AppLanguages::name(language));
    if (m_store)
        names.first() = m_store->text(QStringLiteral("langSystem"));
    return names;
}

int AccountModel::language() const {
    const auto &all = AppLanguages::allCases;
    const auto chosen = m_store ? m_store->language() : AppLanguage::system;
    return static_cast<int>(std::find(all.begin(), all.end(), chosen) - all.begin());
}

void AccountModel::setLanguage(int place) {
    if (place >= 0 && place < static_cast<int>(AppLanguages::allCases.size()))
        m_store->setLanguage(AppLanguages::allCases[static_cast<std::size_t>(place)]);
}
