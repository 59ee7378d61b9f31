#pragma once

#include "platform/Task.h"

#include <QByteArray>
#include <QString>

#include <optional>

/// The system's place for secrets: one item for each pair of service name and account name.
///
/// The synchronous calls take milliseconds once prepare() has ended, and have a limit of 5 s each,
/// past which they count as failed.
class CredentialStore {
public:
    virtual ~CredentialStore() = default;

    enum class Outcome { done, notFound, failed };

    /// Awaited before the first use, and again wherever the user may want another chance to unlock.
    /// Takes as long as the user does, off the main thread.
    [[nodiscard]] virtual Task<void> prepare() = 0;

    /// Absent when there is no such item or it cannot be read.
    virtual std::optional<QByteArray> find(const QString &service, const QString &account) = 0;
    virtual Outcome remove(const QString &service, const QString &account) = 0;
    virtual Outcome add(const QString &service, const QString &account,
                        const QByteArray &secret) = 0;
};
