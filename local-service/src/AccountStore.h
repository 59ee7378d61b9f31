#pragma once

#include "Session.h"

#include <QByteArray>
#include <QString>

#include <optional>

class Call;
class Database;

/// The accounts and their sessions, as the database holds them. Every operation may be called on
/// any thread.
class AccountStore final {
public:
    /// An account and the password hash that it has or had. What must not happen on the word of a
    /// password that is no longer valid is given one of these.
    struct Credentials {
        qint64 number = 0;
        QByteArray passwordHash;
    };

    explicit AccountStore(Database &database);

    /// Makes an account with a valid name; absent when the name is taken.
    std::optional<Credentials> add(const QString &handle, const QByteArray &passwordHash) const;
    std::optional<Credentials> credentials(const QString &handle) const;

    /// Begins a session; false when the credentials have changed or the account has gone.
    bool openSession(const Credentials &credentials, const QByteArray &tokenDigest) const;
    void closeSession(const QByteArray &tokenDigest) const;
    std::optional<Session> session(const QByteArray &token) const;
    /// The session of the request's token. Throws the RequestError "signin_required" without one.
    Session requireSession(const Call &call) const;

    /// Gives a valid name; false when it is taken.
    bool rename(qint64 number, const QString &handle) const;
    void setEmail(qint64 number, const QString &email) const;
    /// Also ends every session of the account but `kept`. False when the credentials have changed.
    bool setPassword(const Credentials &old, const QByteArray &passwordHash,
                     const QByteArray &kept) const;
    /// Removes the account with everything that it owns. False when the credentials have changed.
    bool remove(const Credentials &credentials) const;

private:
    Database &m_database;
};
