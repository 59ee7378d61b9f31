#pragma once

#include "platform/Completion.h"
#include "platform/CredentialStore.h"

#include <QHash>
#include <QStringList>

#include <utility>

/// Secrets in memory. A test sees what was called, and lets a call fail.
class MemoryCredentials final : public CredentialStore {
public:
    [[nodiscard]] Task<void> prepare() override {
        m_calls.append(QStringLiteral("prepare"));
        if (!m_locked)
            co_return;
        const Completion<bool> unlocking;
        m_unlocking.append(unlocking);
        auto waiting = unlocking.result();
        co_await waiting;
    }

    std::optional<QByteArray> find(const QString &service, const QString &account) override {
        m_calls.append(QStringLiteral("find"));
        const auto found = m_secrets.constFind({service, account});
        return found == m_secrets.cend() ? std::nullopt : std::optional(*found);
    }
    Outcome remove(const QString &service, const QString &account) override {
        m_calls.append(QStringLiteral("remove"));
        if (m_removalFails)
            return Outcome::failed;
        return m_secrets.remove({service, account}) ? Outcome::done : Outcome::notFound;
    }
    Outcome add(const QString &service, const QString &account, const QByteArray &secret) override {
        m_calls.append(QStringLiteral("add"));
        // A true keyring does not replace.
        if (m_additionFails || m_secrets.contains({service, account}))
            return Outcome::failed;
        m_secrets.insert({service, account}, secret);
        return Outcome::done;
    }

    QHash<std::pair<QString, QString>, QByteArray> &secrets() { return m_secrets; }
    const QStringList &calls() const { return m_calls; }

    void failRemovals(bool fail = true) { m_removalFails = fail; }
    void failAdditions(bool fail = true) { m_additionFails = fail; }

    /// As if the keyring asked for its password, and nobody answered yet.
    void lock() { m_locked = true; }
    void unlock() {
        m_locked = false;
        for (auto &waiting : std::exchange(m_unlocking, {}))
            waiting.succeed(true);
    }

private:
    QHash<std::pair<QString, QString>, QByteArray> m_secrets;
    QStringList m_calls;
    QList<Completion<bool>> m_unlocking;
    bool m_locked = false;
    bool m_removalFails = false;
    bool m_additionFails = false;
};
