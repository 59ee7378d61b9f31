#pragma once

#include "Clock.h"

class Router;
class SignIn;
class SignInCodes;

/// The sign-in by the browser: a page that stands in for the one of Google, and the exchange of its
/// code for a login.
namespace BrowserRoutes {

/// `signIn` and `codes` must outlive the router.
void add(Router &router, SignIn &signIn, SignInCodes &codes, const Clock &clock);

} // namespace BrowserRoutes
