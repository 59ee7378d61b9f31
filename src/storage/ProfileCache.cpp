#include "storage/ProfileCache.h"

#include "storage/LibraryDisk.h"
#include "storage/ReadingCache.h"

#include <QCryptographicHash>

namespace {

const QString profile = QStringLiteral("profile");

} // namespace

QString ProfileCache::scope(const QString &server, const QString &token) {
    const auto digest = QCryptographicHash::hash(token.toUtf8(), QCryptographicHash::Sha256);
    return LibraryDisk::key(server,
                            QLatin1String("session:") + QString::fromLatin1(digest.toHex()));
}

std::optional<Account> ProfileCache::get(Files &files, const QString &server,
                                         const QString &token) {
    return ReadingCache::get<Account>(files, scope(server, token), profile);
}

void ProfileCache::put(Files &files, const Account &account, const QString &server,
                       const QString &token) {
    ReadingCache::put(files, account, scope(server, token), profile);
}
