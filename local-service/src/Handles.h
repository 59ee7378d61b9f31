#pragma once

#include "RequestError.h"

#include <QString>

/// The names of accounts.
namespace Handles {

inline constexpr qsizetype shortest = 2;
inline constexpr qsizetype longest = 40;
/// In UTF-16 units: what is longer is no name, however its letters are put together.
inline constexpr qsizetype longestTyped = 8 * longest;

/// The form in which a name is stored and shown. Only letters, digits, single blanks and ". _ - '"
/// may stand in it, so that no two names differ in signs that nobody sees. Throws the RequestError
/// "bad_name".
QString accepted(const QString &handle);

/// The form in which names are compared: "Ada", "ada" and " ADA" are the same name.
QString folded(const QString &handle);

/// Why a name that another account has is refused.
RequestError taken();

} // namespace Handles
