#include "storage/LibraryDisk.h"

#include <QCryptographicHash>

QString LibraryDisk::key(const QString &server, const std::optional<QString> &user) {
    const auto text =
        server + QLatin1Char('|') + user.value_or(QStringLiteral("anonymous"));
    const auto digest = QCryptographicHash::hash(text.toUtf8(), QCryptographicHash::Sha256);
    return QString::fromLatin1(digest.toHex());
}
