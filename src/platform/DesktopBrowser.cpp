#include "platform/DesktopBrowser.h"

#include <QDesktopServices>

bool DesktopBrowser::open(const QUrl &url) {
    return QDesktopServices::openUrl(url);
}
