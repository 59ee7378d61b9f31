#pragma once

class Router;
class SignIn;

/// The web page on which a new account is made.
namespace RegisterRoutes {

/// `signIn` must outlive the router.
void add(Router &router, SignIn &signIn);

} // namespace RegisterRoutes
