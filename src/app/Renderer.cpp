#include "app/Renderer.h"

#include <QDir>
#include <QQuickWindow>

namespace {

bool hasGpu() {
#ifdef Q_OS_LINUX
    return !QDir(QStringLiteral("/dev/dri"))
                .entryList({QStringLiteral("renderD*")}, QDir::System | QDir::Files)
                .isEmpty();
#else
    return true;
#endif
}

} // namespace

void Renderer::choose() {
    if (!hasGpu())
        QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
}
