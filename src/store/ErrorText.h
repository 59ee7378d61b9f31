#pragma once

#include "records/AppLanguage.h"

#include <QString>

#include <exception>

/// The one place that turns an error into words.
namespace ErrorText {

/// For an alert or a status line. Takes an effective language. Knows the kinds of error that
/// operations throw; anything else reads as an unknown failure.
QString describe(std::exception_ptr error, AppLanguage language);

} // namespace ErrorText
