#pragma once

#include "records/DecodingError.h"
#include "records/JsonFields.h"

#include <QByteArray>

/// The one JSON codec of all records.
///
/// Decoding is strict: a required key that is missing, null or of another type fails the whole
/// text, keys that a record does not name are ignored, and integers are exact within 64 bits. Text
/// that is not JSON, not UTF-8, cut off, or nested more than 512 deep ends in a DecodingError as
/// well.
///
/// Every function may be called on any thread.
namespace Json {

/// Decodes a text whose root is one object. Throws DecodingError.
/// The text is taken by value, since the parser wants room behind it: move it in to spare a copy.
template <class Record>
Record decode(QByteArray text, DateForm dates = DateForm::millisecondsSince1970);

/// Encodes a record as compact UTF-8: required keys always, optional keys only where they hold a
/// value.
template <class Record>
QByteArray encode(const Record &record, DateForm dates = DateForm::millisecondsSince1970);

} // namespace Json
