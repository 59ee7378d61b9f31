#include "platform/DesktopCredentialStore.h"

#include "platform/SessionBus.h"
#include "platform/Worker.h"

Task<void> DesktopCredentialStore::prepare() {
    if (isFile())
        co_return;
    if (!m_keyring && SessionBus::isThere()) {
        auto opening = onWorker(m_openKeyring);
        auto opened = co_await opening;
        if (!m_keyring)
            m_keyring = std::move(opened);
    }
    if (m_keyring) {
        auto preparing = m_keyring->prepare();
        co_await preparing;
    }
    // A keyring that has gone since it was chosen stays the choice: the file would not know the
    // login.
    if (m_chosen)
        co_return;
    if (m_keyring && m_keyring->isAvailable())
        m_chosen = m_keyring.get();
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
