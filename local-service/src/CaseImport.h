#pragma once

#include <QByteArray>
#include <QList>

class Database;

/// Brings the written cases into the database.
namespace CaseImport {

/// Fills the tables of the cases anew, all or nothing, where they were filled from other texts;
/// gives whether it did. Touches no other table. Throws DecodingError, DatabaseError or a
/// runtime_error.
bool run(Database &database, const QList<QByteArray> &texts);

} // namespace CaseImport
