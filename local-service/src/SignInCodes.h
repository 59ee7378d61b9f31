#pragma once

#include "AccountStore.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <chrono>
#include <mutex>
#include <optional>

/// The one-time codes with which a browser hands a sign-in over to the program. They live in memory
/// only. Every operation may be called on any thread; `now` is in milliseconds since 1970.
class SignInCodes final {
public:
    static constexpr std::chrono::milliseconds life = std::chrono::minutes(5);

    /// A code for whoever holds the verifier of this challenge.
    QString issue(const AccountStore::Credentials &credentials, const QByteArray &challenge,
                  qint64 now);

    /// Who signed in, if the verifier belongs to the code. The code is used up in any case.
    std::optional<AccountStore::Credentials> redeem(const QString &code, const QString &verifier,
                                                    qint64 now);

private:
    struct Issued {
        AccountStore::Credentials credentials;
        QByteArray challenge;
        qint64 at = 0;
    };

    void dropExpired(qint64 now);

    std::mutex m_mutex;
    QHash<QString, Issued> m_issued;
};
