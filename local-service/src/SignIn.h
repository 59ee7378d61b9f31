#pragma once

#include "AccountStore.h"
#include "AttemptLimit.h"
#include "Clock.h"

#include "records/Account.h"

#include <QString>

#include <optional>

/// From a name and a password to a session. Every operation may be called on any thread; each that
/// takes a password takes about a tenth of a second.
class SignIn final {
public:
    SignIn(Database &database, Clock clock);

    /// Makes an account. Throws the RequestErrors "bad_name", "bad_password" and "name_taken".
    AccountStore::Credentials add(const QString &handle, const QString &password);

    /// The account of this name, if the password is its own. An account that does not exist takes
    /// as long as a wrong password. Throws RequestError after too many failures.
    std::optional<AccountStore::Credentials> verify(const QString &handle, const QString &password);

    /// The same for somebody who signs in: both failures are the RequestError "bad_login".
    AccountStore::Credentials require(const QString &handle, const QString &password);

    /// Begins a session. Throws the RequestError "bad_login" when the credentials hold no more.
    Login open(const AccountStore::Credentials &credentials);

    /// Whether the password may be chosen. Throws the RequestError "bad_password".
    static void checkNew(const QString &password);

private:
    AccountStore m_accounts;
    Clock m_clock;
    AttemptLimit m_limit;
};
