#pragma once

#include "records/Catalogue.h"
#include "records/Library.h"

#include <QByteArray>

/// What a careful programmer would write for these records alone: the parser's and the writer's own
/// interface, one function for each record, the same structs and the same checks of required keys.
/// Keys that a record does not name are passed over without a look at their values. Dates are in
/// the form of files.
namespace HandWritten {

/// Throws std::runtime_error.
SearchPage decodeSearchPage(QByteArray text);
LocalLibrary decodeLibrary(QByteArray text);

QByteArray encode(const SearchPage &page);
QByteArray encode(const LocalLibrary &library);

} // namespace HandWritten
