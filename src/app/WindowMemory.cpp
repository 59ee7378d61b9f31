#include "app/WindowMemory.h"

#include "platform/FileError.h"
#include "platform/Files.h"

#include <QGuiApplication>
#include <QJsonDocument>
#include <QJsonObject>
#include <QScreen>
#include <QWindow>

#include <algorithm>

namespace {

const QLatin1String fileName("window.json");
const QLatin1String widthKey("width");
const QLatin1String heightKey("height");
const QLatin1String maximizedKey("maximized");
const QLatin1String sidebarKey("sidebarWidth");

QVariantMap read(Files &files, const QString &path) {
    try {
        if (files.exists(path))
            return QJsonDocument::fromJson(files.read(path)).object().toVariantMap();
    } catch (const FileError &) {
        // As good as a first start.
    }
    return {};
}

} // namespace

WindowMemory::WindowMemory(Files &files, const QString &directory)
    : m_files(files), m_directory(directory), m_left(read(files, directory + u'/' + fileName)) {}

QVariantMap WindowMemory::initialProperties() const {
    QVariantMap properties;
    const auto screen = QGuiApplication::primaryScreen()->availableSize();
    const int width = m_left.value(widthKey).toInt();
    const int height = m_left.value(heightKey).toInt();
    if (width > 0 && height > 0) {
        properties.insert(widthKey, std::min(width, screen.width()));
        properties.insert(heightKey, std::min(height, screen.height()));
    }
    if (m_left.value(maximizedKey).toBool())
        properties.insert(QStringLiteral("visibility"), QWindow::Maximized);
    if (const double sidebar = m_left.value(sidebarKey).toDouble(); sidebar > 0)
        properties.insert(sidebarKey, sidebar);
    return properties;
}

void WindowMemory::keep(const QWindow &window) {
    auto left = m_left;
    const bool maximized = window.windowStates().testFlag(Qt::WindowMaximized);
    // A maximized window goes back to the size that it had before.
    if (!maximized) {
        left.insert(widthKey, window.width());
        left.insert(heightKey, window.height());
    }
    left.insert(maximizedKey, maximized);
    left.insert(sidebarKey, window.property(sidebarKey.data()));
    if (left == m_left)
        return;
    m_left = left;
    try {
        m_files.makePrivateDirectory(m_directory);
        m_files.writeAtomically(m_directory + u'/' + fileName,
                                {QJsonDocument(QJsonObject::fromVariantMap(left)).toJson()});
    } catch (const FileError &) {
        // The next window opens as the last one that could be kept.
    }
}
