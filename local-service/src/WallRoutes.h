#pragma once

#include "Clock.h"

#include <QString>

class CaseStore;
class Database;
class Router;

/// What an account pins to its wall: cases and chats.
namespace WallRoutes {

/// `origin` is the service's own address without a slash at its end. The stores must outlive the
/// router.
void add(Router &router, Database &database, CaseStore &cases, const QString &origin,
         const Clock &clock);

} // namespace WallRoutes
