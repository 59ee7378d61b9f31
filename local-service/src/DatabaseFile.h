#pragma once

#include <QString>

/// The database as a file: whose it is and who may read it.
namespace DatabaseFile {

/// Stands in the header of every database of this service and tells it from all others.
inline constexpr quint32 applicationId = 0x516C6D73;

/// Makes `directory` (0700) and, inside it, an empty file (0600) where there is none yet. Gives the
/// file's path. Throws DatabaseError for a file that this service did not make, and leaves that one
/// untouched.
QString prepare(const QString &directory);

/// Whether nothing has been written to the file yet.
bool isEmpty(const QString &path);

} // namespace DatabaseFile
