#pragma once

#include <QString>

#include <optional>

/// The library files, one for each pair of server and user.
namespace LibraryDisk {

/// 64 lower-case hexadecimal characters. The server is the text as it was written: two written forms
/// of one address are two libraries. An absent user is the guest.
QString key(const QString &server, const std::optional<QString> &user);

} // namespace LibraryDisk
