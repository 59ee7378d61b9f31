#include "platform/DesktopCredentialStore.h"

Task<void> DesktopCredentialStore::prepare() {
    if (isFile())
        co_return;
    auto preparing = m_keyring.prepare();
    co_await preparing;
    // A keyring that has gone since it was chosen stays the choice: the file would not know the
    // login.
    if (m_chosen)
        co_return;
    if (m_keyring.isAvailable())
        m_chosen = &m_keyring;
    else
        m_chosen = &m_file;
}

std::optional<QByteArray> DesktopCredentialStore::find(const QString &service,
                                                       const QString &account) {
    return m_chosen ? m_chosen->find(service, account) : std::nullopt;
}

CredentialStore::Outcome DesktopCredentialStore::remove(const QString &service,
                                                        const QString &account) {
    return m_chosen ? m_chosen->remove(service, account) : Outcome::failed;
}

CredentialStore::Outcome DesktopCredentialStore::add(const QString &service, const QString &account,
                                                     const QByteArray &secret) {
    return m_chosen ? m_chosen->add(service, account, secret) : Outcome::failed;
}
