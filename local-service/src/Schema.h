#pragma once

class Database;

/// The tables of the database and their history.
namespace Schema {

/// Brings the tables to the newest form, step by step. Throws DatabaseError, also for tables that a
/// newer version of this service has made.
void migrate(Database &database);

} // namespace Schema
