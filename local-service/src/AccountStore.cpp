#include "AccountStore.h"

#include "Call.h"
#include "Database.h"
#include "Handles.h"
#include "Secrets.h"

#include "records/Identifier.h"

namespace {

Account readAccount(const Statement &row) {
    Account account;
    account.user.id = row.text(1);
    account.user.handle = row.text(2);
    // This service sends no mail, so no address is ever confirmed.
    if (const auto email = row.text(3); !email.isEmpty()) {
        account.user.email = email;
        account.user.verified = false;
    }
    account.plan = QStringLiteral("free");
    return account;
}

} // namespace

AccountStore::AccountStore(Database &database) : m_database(database) {}

std::optional<AccountStore::Credentials> AccountStore::add(const QString &handle,
                                                           const QByteArray &passwordHash) const {
    Database::Access access(m_database);
    auto insert = access.prepare("INSERT INTO accounts (id, handle, foldedHandle, password)"
                                 " VALUES (?, ?, ?, ?) ON CONFLICT DO NOTHING RETURNING number");
    insert.bind(Identifier::make().text)
        .bind(handle)
        .bind(Handles::folded(handle))
        .bind(passwordHash);
    if (!insert.next())
        return std::nullopt;
    const auto number = insert.integer(0);
    insert.run();
    return Credentials{number, passwordHash};
}

std::optional<AccountStore::Credentials> AccountStore::credentials(const QString &handle) const {
    Database::Access access(m_database);
    auto query = access.prepare("SELECT number, password FROM accounts WHERE foldedHandle = ?");
    query.bind(Handles::folded(handle));
    if (!query.next())
        return std::nullopt;
    return Credentials{query.integer(0), query.utf8(1)};
}

bool AccountStore::openSession(const Credentials &credentials,
                               const QByteArray &tokenDigest) const {
    Database::Access access(m_database);
    auto insert = access.prepare("INSERT INTO sessions (digest, account) SELECT ?, number"
                                 " FROM accounts WHERE number = ? AND password = ? RETURNING 1");
    return insert.bind(tokenDigest).bind(credentials.number).bind(credentials.passwordHash).run();
}

void AccountStore::closeSession(const QByteArray &tokenDigest) const {
    Database::Access access(m_database);
    access.prepare("DELETE FROM sessions WHERE digest = ?").bind(tokenDigest).run();
}

std::optional<Session> AccountStore::session(const QByteArray &token) const {
    const auto digest = Secrets::digest(token);
    Database::Access access(m_database);
    auto query = access.prepare("SELECT number, id, handle, email FROM sessions JOIN accounts"
                                " ON accounts.number = sessions.account WHERE digest = ?");
    query.bind(digest);
    if (!query.next())
        return std::nullopt;
    return Session{query.integer(0), readAccount(query), digest};
}

Session AccountStore::requireSession(const Call &call) const {
    if (auto found = session(call.bearerToken()))
        return *std::move(found);
    throw RequestError(401, QStringLiteral("signin_required"),
                       QStringLiteral("Sign in to use this."));
}

bool AccountStore::rename(qint64 number, const QString &handle) const {
    Database::Access access(m_database);
    auto update = access.prepare("UPDATE OR IGNORE accounts SET handle = ?, foldedHandle = ?"
                                 " WHERE number = ? RETURNING 1");
    return update.bind(handle).bind(Handles::folded(handle)).bind(number).run();
}

void AccountStore::setEmail(qint64 number, const QString &email) const {
    Database::Access access(m_database);
    access.prepare("UPDATE accounts SET email = ? WHERE number = ?").bind(email).bind(number).run();
}

bool AccountStore::setPassword(const Credentials &old, const QByteArray &passwordHash,
                               const QByteArray &kept) const {
    Database::Access access(m_database);
    Database::Transaction transaction(access);
    auto update = access.prepare("UPDATE accounts SET password = ?"
                                 " WHERE number = ? AND password = ? RETURNING 1");
    if (!update.bind(passwordHash).bind(old.number).bind(old.passwordHash).run())
        return false;
    access.prepare("DELETE FROM sessions WHERE account = ? AND digest <> ?")
        .bind(old.number)
        .bind(kept)
        .run();
    transaction.commit();
    return true;
}

bool AccountStore::remove(const Credentials &credentials) const {
    Database::Access access(m_database);
    auto removal =
        access.prepare("DELETE FROM accounts WHERE number = ? AND password = ? RETURNING 1");
    return removal.bind(credentials.number).bind(credentials.passwordHash).run();
}
