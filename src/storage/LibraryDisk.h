#pragma once

#include "records/Library.h"
#include "storage/LibraryEncoder.h"

#include <QString>

#include <optional>

class Files;

/// The library files, one for each pair of server and user. A file that cannot be read is left as
/// it is: nothing is repaired, moved aside or deleted.
namespace LibraryDisk {

/// What this program's directories are called: the released program and every other build have
/// their own.
QString directoryName(const QString &bundleIdentifier);

/// 64 lower-case hexadecimal characters. The server is the text as it was written: two written
/// forms of one address are two libraries. An absent user is the guest.
QString key(const QString &server, const std::optional<QString> &user);

/// Where the library of the key lies. Sees to its directory; throws FileError when that fails.
QString file(Files &files, const QString &key);

/// Takes all libraries of this machine's user for this process, for as long as `files` lives; false
/// while another process has them. Throws FileError.
bool claim(Files &files);

/// An empty library where there is no file. Throws FileError and DecodingError.
LocalLibrary load(Files &files, const QString &key);

/// Writes the whole library. Throws FileError. The encoder is best kept from one save to the next.
void save(Files &files, LibraryEncoder &encoder, const LocalLibrary &library, const QString &key);

} // namespace LibraryDisk
