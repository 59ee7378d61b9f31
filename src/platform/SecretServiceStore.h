#pragma once

#include "platform/Keyring.h"

#include <QFuture>
#include <QHash>

#include <chrono>
#include <future>
#include <memory>
#include <type_traits>
#include <utility>

struct _GCancellable;

/// Secrets in the desktop's keyring, reached over the session bus. Items go into the default
/// collection. What was read or written is remembered.
///
/// The other side is another process that may be slow, hang, or want to ask the user something. So
/// each call runs on a thread of its own and is given up after its limit, and only prepare() may
/// make the keyring ask. After a call that was given up, all others fail at once until prepare().
class SecretServiceStore final : public Keyring {
public:
    struct Limits {
        /// For the keyring's first answer; it may have to be started for it.
        std::chrono::milliseconds opening = std::chrono::seconds(20);
        std::chrono::milliseconds call = std::chrono::seconds(5);
    };

    /// The label stands before the account in the name under which a keyring shows an item.
    explicit SecretServiceStore(QString label) : SecretServiceStore(std::move(label), Limits()) {}
    SecretServiceStore(QString label, Limits limits);
    ~SecretServiceStore() override;

    /// Reaches the keyring and has its default collection unlocked, for which the user has all the
    /// time they want. To be awaited again when an item is wanted that was locked meanwhile. The
    /// store outlives its waiters, or the event loop.
    [[nodiscard]] Task<void> prepare() override;

    /// Available is one with a default collection.
    bool isAvailable() const override { return m_available; }

    std::optional<QByteArray> find(const QString &service, const QString &account) override;
    Outcome remove(const QString &service, const QString &account) override;
    Outcome add(const QString &service, const QString &account, const QByteArray &secret) override;

private:
    template <class Call>
    auto ask(Call call) -> std::optional<std::invoke_result_t<Call, _GCancellable *>>;

    QString m_label;
    Limits m_limits;
    bool m_available = false;
    QHash<std::pair<QString, QString>, std::optional<QByteArray>> m_known;

    std::shared_ptr<_GCancellable> m_closing;
    QFuture<bool> m_opening;
    std::future<void> m_openingEnded;
};
