#include "SignInCodes.h"

#include "Secrets.h"

#include <QCryptographicHash>

namespace {

QByteArray challengeOf(const QString &verifier) {
    return QCryptographicHash::hash(verifier.toUtf8(), QCryptographicHash::Sha256)
        .toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals);
}

} // namespace

QString SignInCodes::issue(const AccountStore::Credentials &credentials,
                           const QByteArray &challenge, qint64 now) {
    const auto code = Secrets::make();
    const std::lock_guard lock(m_mutex);
    dropExpired(now);
    m_issued.insert(code, {credentials, challenge, now});
    return code;
}

std::optional<AccountStore::Credentials> SignInCodes::redeem(const QString &code,
                                                             const QString &verifier, qint64 now) {
    const std::lock_guard lock(m_mutex);
    dropExpired(now);
    const auto found = m_issued.constFind(code);
    if (found == m_issued.constEnd())
        return std::nullopt;
    const Issued issued = *found;
    m_issued.erase(found);
    if (challengeOf(verifier) != issued.challenge)
        return std::nullopt;
    return issued.credentials;
}

void SignInCodes::dropExpired(qint64 now) {
    m_issued.removeIf(
        [now](const auto &entry) { return now < entry->at || now - entry->at >= life.count(); });
}
