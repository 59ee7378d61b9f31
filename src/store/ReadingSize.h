#pragma once

#include <QLatin1String>
#include <QString>

#include <optional>

/// The text size of the readers, as it is kept in the preferences.
namespace ReadingSize {

inline constexpr QLatin1String key("readingSize");

/// The nearest size that readers offer.
double limited(double size);

/// What a stored text says; the usual size when it says nothing.
double stored(const std::optional<QString> &text);

} // namespace ReadingSize
