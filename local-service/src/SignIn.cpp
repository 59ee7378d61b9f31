#include "SignIn.h"

#include "Handles.h"
#include "Passwords.h"
#include "RequestError.h"
#include "Secrets.h"

namespace {

constexpr qsizetype shortestPassword = 8;
constexpr qsizetype longestPassword = 1000;

RequestError badLogin() {
    return {401, QStringLiteral("bad_login"),
            QStringLiteral("The name or the password is not right.")};
}

} // namespace

SignIn::SignIn(Database &database, Clock clock) : m_accounts(database), m_clock(std::move(clock)) {}

void SignIn::checkNew(const QString &password) {
    if (password.size() < shortestPassword || password.size() > longestPassword)
        throw RequestError(400, QStringLiteral("bad_password"),
                           QStringLiteral("A password must have at least %1 characters, and at "
                                          "most %2.")
                               .arg(shortestPassword)
                               .arg(longestPassword));
}

AccountStore::Credentials SignIn::add(const QString &handle, const QString &password) {
    const auto name = Handles::accepted(handle);
    checkNew(password);
    const auto added = m_accounts.add(name, Passwords::hash(password));
    if (!added)
        throw Handles::taken();
    return *added;
}

std::optional<AccountStore::Credentials> SignIn::verify(const QString &handle,
                                                        const QString &password) {
    // Such names would only take up the memory that counts the attempts.
    if (handle.size() > Handles::longestTyped)
        return std::nullopt;
    const auto name = Handles::folded(handle);
    if (const auto wait = m_limit.admit(name, m_clock()))
        throw RequestError::tooManyAttempts(*wait);
    const auto known = m_accounts.credentials(handle);
    const auto hash = known ? known->passwordHash : Passwords::ofNobody();
    if (!Passwords::matches(hash, password) || !known)
        return std::nullopt;
    m_limit.forget(name);
    return known;
}

AccountStore::Credentials SignIn::require(const QString &handle, const QString &password) {
    const auto verified = verify(handle, password);
    if (!verified)
        throw badLogin();
    return *verified;
}

Login SignIn::open(const AccountStore::Credentials &credentials) {
    const auto token = QStringLiteral("app_") + Secrets::make();
    const auto digest = Secrets::digest(token.toLatin1());
    if (!m_accounts.openSession(credentials, digest))
        throw badLogin();
    const auto session = m_accounts.session(token.toLatin1());
    if (!session)
        throw badLogin();
    const auto &account = session->account;
    return {token,        account.user, account.plan, account.subscription, account.planExpiresAt,
            account.apple};
}
