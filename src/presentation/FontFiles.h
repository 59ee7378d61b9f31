#pragma once

#include <QString>

/// The embedded fonts. Each is cut from a variable font at fixed axis values, since the toolkit's
/// floor cannot set axes.
namespace FontFiles {

/// Makes every embedded font known to the toolkit. To be called once, before the first window: each
/// font that comes later makes all windows lay out their texts again. A file that is no font is
/// passed over.
void registerAll();

/// The family nearest to the axis values among those of a name such as "Archivo" or
/// "Newsreader-Italic", ready to be used. Empty when there is no such font at all.
QString family(const QString &name, int weight, int secondAxis);

/// A family that has a file of its own.
QString family(const QString &file);

} // namespace FontFiles
