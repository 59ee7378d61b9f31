#pragma once

#include <QString>

/// The embedded fonts. Where the toolkit cannot set axes each is cut from a variable font at fixed
/// values. Any thread: the first call registers all of them, and others wait for it.
namespace FontFiles {

/// Makes every embedded font known to the toolkit, which takes a while. To be called before the
/// first window, best on another thread: a font that comes later makes all windows lay out their
/// texts again. A file that is no font is passed over.
void registerAll();

/// The family with axes of a name such as "Archivo" or "Newsreader-Italic", else the nearest to the
/// values among those cut from it. Empty when there is no such font at all.
QString family(const QString &name, int weight, int secondAxis);

/// A family that has a file of its own.
QString family(const QString &file);

} // namespace FontFiles
