#pragma once

#include <QByteArray>

/// What the pages of the service have in common: colours for light and dark, and the text's shape.
namespace PageStyle {

QByteArray base();

} // namespace PageStyle
