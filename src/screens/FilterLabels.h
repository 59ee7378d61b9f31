#pragma once

#include "copy/Words.h"

/// How the values of the browser's filters read.
namespace FilterLabels {

/// A category of the archive; one that has no text of its own is shown as it came, each of its
/// words with a capital.
QString category(const QString &value, const QString &archive, const Words &words);

/// A decade, given by its first year or as "before1940".
QString decade(const QString &value, const Words &words);

} // namespace FilterLabels
