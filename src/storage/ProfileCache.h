#pragma once

#include "records/Account.h"

#include <QString>

#include <optional>

class Files;

/// The account record of a login, so that a start knows who is signed in before the service has
/// answered. Belongs to the exact token it came with; the token itself is in no name and no file.
namespace ProfileCache {

QString scope(const QString &server, const QString &token);

std::optional<Account> get(Files &files, const QString &server, const QString &token);
void put(Files &files, const Account &account, const QString &server, const QString &token);

} // namespace ProfileCache
