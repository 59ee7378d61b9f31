#pragma once

#include "records/Library.h"

class Database;
struct Session;

/// The libraries of the accounts.
namespace LibraryStore {

/// Takes the changes, all or none, and gives the whole library as it then is. A change that has
/// come before is accepted again with the outcome that it had, and changes nothing. Expects changes
/// that are sound in themselves.
LibraryReply exchange(Database &database, const Session &session,
                      const QList<LibraryChange> &changes);

} // namespace LibraryStore
