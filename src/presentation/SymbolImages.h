#pragma once

#include <QQuickImageProvider>

/// Draws the line icons: "image://symbol/<name>/<colour as rrggbb>" gives the SVG of that name in
/// that colour, sharp at the size and scale factor that is asked for.
class SymbolImages final : public QQuickImageProvider {
public:
    SymbolImages();

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override;
};
