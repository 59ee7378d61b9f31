#pragma once

#include <QString>

class CaseStore;
class Router;

/// The collection on the wire: health, archives, search, filter values and the cases themselves.
namespace CatalogueRoutes {

/// `origin` is the service's own address without a slash at its end. The store must outlive the
/// router.
void add(Router &router, CaseStore &store, const QString &origin);

} // namespace CatalogueRoutes
