#pragma once

#include <QByteArray>
#include <QString>

/// Passwords as they are stored. Every operation takes about a tenth of a second and 64 MiB, so
/// none may be called by whoever holds the database.
namespace Passwords {

QByteArray hash(const QString &password);

bool matches(const QByteArray &hash, const QString &password);

/// A hash that is not made from any password, and that costs as much to compare as every other:
/// what stands in for an account that does not exist.
QByteArray ofNobody();

} // namespace Passwords
