#pragma once

#include "Clock.h"

class AnswerWriter;
class Answerer;
class Database;
class Router;

/// Questions and their streamed answers.
namespace ChatRoutes {

/// How many answers may run at the same time. Each holds one of the server's threads, and the other
/// requests need some as well.
inline constexpr int greatestRuns = 6;

/// The answerer, the writer and the database must outlive the router.
void add(Router &router, const Answerer &answerer, const AnswerWriter &writer, Database &database,
         const Clock &clock);

} // namespace ChatRoutes
