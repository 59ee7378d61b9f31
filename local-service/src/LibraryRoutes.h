#pragma once

class Database;
class Router;

/// The exchange of a library between an account's devices.
namespace LibraryRoutes {

/// The largest body of an exchange, in bytes.
inline constexpr int greatestUpload = 1'000'000;

/// The database must outlive the router.
void add(Router &router, Database &database);

} // namespace LibraryRoutes
