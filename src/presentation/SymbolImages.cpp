#include "presentation/SymbolImages.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

SymbolImages::SymbolImages() : QQuickImageProvider(QQuickImageProvider::Image) {}

QImage SymbolImages::requestImage(const QString &id, QSize *size, const QSize &requestedSize) {
    constexpr QSize natural(24, 24);
    const auto slash = id.lastIndexOf(QLatin1Char('/'));
    const QSize wanted = requestedSize.isEmpty() ? natural : requestedSize;
    QImage image(wanted, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    if (size)
        *size = natural;

    QFile file(QStringLiteral(":/symbols/%1.svg").arg(id.left(slash)));
    if (!file.open(QIODevice::ReadOnly))
        return image;
    auto svg = file.readAll();
    svg.replace("currentColor", "#" + id.mid(slash + 1).toLatin1());
    QSvgRenderer renderer(svg);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}
