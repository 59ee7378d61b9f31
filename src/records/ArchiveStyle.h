#pragma once

#include <QString>
#include <QStringList>

#include <cstdint>

/// The five archives that the program knows by heart: order, colour and web domain. What the
/// service says of them does not override this table.
namespace ArchiveStyle {

/// In display order.
const QStringList &ids();

/// sRGB as 0xRRGGBB; an unknown id has the colour of "foible".
std::uint32_t color(const QString &id);

/// The id and its domain suffix, such as "foible" followed by a dot and a few letters.
QString domain(const QString &id);

} // namespace ArchiveStyle
