#pragma once

#include "Clock.h"

class Database;
class Router;
class SignIn;

/// Login, profile, quota and the other requests about one's own account.
namespace AccountRoutes {

/// The database and `signIn` must outlive the router.
void add(Router &router, Database &database, SignIn &signIn, const Clock &clock);

} // namespace AccountRoutes
