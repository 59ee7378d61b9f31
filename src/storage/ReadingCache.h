#pragma once

#include "records/Account.h"
#include "records/Catalogue.h"
#include "records/Wall.h"

#include <QList>
#include <QString>

#include <optional>

class Files;

/// Copies of what was last fetched, to show when the service is out of reach. Each lies in a file
/// of its own, in a directory for its scope, beside the library files. A scope keeps one user's
/// copies away from another's. Best effort: no failure is reported, nothing expires, nothing is
/// deleted.
namespace ReadingCache {

/// Absent when there is no copy, or none that can be read as the type.
template <class Value>
std::optional<Value> get(Files &files, const QString &scope, const QString &key);

template <class Value>
void put(Files &files, const Value &value, const QString &scope, const QString &key);

extern template std::optional<Account> get(Files &, const QString &, const QString &);
extern template std::optional<CaseEntry> get(Files &, const QString &, const QString &);
extern template std::optional<QList<WallItem>> get(Files &, const QString &, const QString &);
extern template void put(Files &, const Account &, const QString &, const QString &);
extern template void put(Files &, const CaseEntry &, const QString &, const QString &);
extern template void put(Files &, const QList<WallItem> &, const QString &, const QString &);

} // namespace ReadingCache
