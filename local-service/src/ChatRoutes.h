#pragma once

#include "Clock.h"
#include "Pause.h"

class Answerer;
class Database;
class Router;

/// Questions and their streamed answers.
namespace ChatRoutes {

/// How many answers may run at the same time. Each holds one of the server's threads, and the other
/// requests need some as well.
inline constexpr int greatestRuns = 6;

/// `pause` is called between the pieces of an answer. The answerer and the database must outlive
/// the router.
void add(Router &router, const Answerer &answerer, Database &database, const Clock &clock,
         const Pause &pause);

} // namespace ChatRoutes
