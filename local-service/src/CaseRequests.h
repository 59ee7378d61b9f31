#pragma once

#include <QString>

class Database;

/// What readers have asked the editors of an archive for.
namespace CaseRequests {

/// Keeps the question; false when this account has asked it of this archive before. `account` is
/// the number of a Session, `now` in milliseconds since 1970.
bool add(Database &database, qint64 account, const QString &archive, const QString &question,
         qint64 now);

} // namespace CaseRequests
