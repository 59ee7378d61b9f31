#pragma once

#include "platform/FileCredentialStore.h"
#include "platform/SecretServiceStore.h"

/// The desktop's keyring where there is one, else a private file. Chosen once, by prepare(); before
/// that every operation fails.
class DesktopCredentialStore final : public CredentialStore {
public:
    /// The directory is that of the file, the label that of the keyring's items.
    DesktopCredentialStore(Files &files, QString directory, QString label)
        : m_keyring(std::move(label)), m_file(files, std::move(directory)) {}
    DesktopCredentialStore(Files &files, QString directory, QString label,
                           SecretServiceStore::Limits limits)
        : m_keyring(std::move(label), limits), m_file(files, std::move(directory)) {}

    [[nodiscard]] Task<void> prepare() override;

    /// Whether secrets lie in the file; known after prepare().
    bool isFile() const override { return m_chosen == &m_file; }

    std::optional<QByteArray> find(const QString &service, const QString &account) override;
    Outcome remove(const QString &service, const QString &account) override;
    Outcome add(const QString &service, const QString &account, const QByteArray &secret) override;

private:
    SecretServiceStore m_keyring;
    FileCredentialStore m_file;
    CredentialStore *m_chosen = nullptr;
};
