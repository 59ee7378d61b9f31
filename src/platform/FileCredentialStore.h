#pragma once

#include "platform/CredentialStore.h"

#include <QJsonArray>

class Files;

/// Secrets in a private file, for a machine without a keyring. Whoever can read this user's files
/// can read them. A file that cannot be read fails every operation and is never overwritten.
class FileCredentialStore final : public CredentialStore {
public:
    /// The directory becomes private when the first secret is stored. `files` outlives the store.
    FileCredentialStore(Files &files, QString directory)
        : m_files(files), m_directory(std::move(directory)) {}

    [[nodiscard]] Task<void> prepare() override;

    std::optional<QByteArray> find(const QString &service, const QString &account) override;
    Outcome remove(const QString &service, const QString &account) override;
    Outcome add(const QString &service, const QString &account, const QByteArray &secret) override;

private:
    QString path() const;
    QJsonArray load() const;
    void save(const QJsonArray &items) const;

    Files &m_files;
    QString m_directory;
};
