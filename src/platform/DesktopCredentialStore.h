#pragma once

#include "platform/FileCredentialStore.h"
#include "platform/Keyring.h"

#include <functional>
#include <memory>

/// The desktop's keyring where there is one, else a private file. Chosen once, by prepare(); before
/// that every operation fails.
class DesktopCredentialStore final : public CredentialStore {
public:
    using OpenKeyring = std::function<std::unique_ptr<Keyring>()>;

    /// The directory is that of the file. The keyring is opened on a worker, and only where there
    /// is a session bus to reach one by.
    DesktopCredentialStore(Files &files, QString directory, OpenKeyring openKeyring)
        : m_openKeyring(std::move(openKeyring)), m_file(files, std::move(directory)) {}

    [[nodiscard]] Task<void> prepare() override;

    /// Whether secrets lie in the file; known after prepare().
    bool isFile() const override { return m_chosen == &m_file; }

    std::optional<QByteArray> find(const QString &service, const QString &account) override;
    Outcome remove(const QString &service, const QString &account) override;
    Outcome add(const QString &service, const QString &account, const QByteArray &secret) override;

private:
    OpenKeyring m_openKeyring;
    std::unique_ptr<Keyring> m_keyring;
    FileCredentialStore m_file;
    CredentialStore *m_chosen = nullptr;
};
