#include "tests/screens/OpenWindow.h"

#include "presentation/SymbolImages.h"
#include "tests/support/Await.h"

#include <QAccessible>
#include <QGuiApplication>
#include <QQuickStyle>
#include <QTest>

#include <algorithm>

namespace {

void collect(QQuickItem *item, QList<QQuickItem *> &items) {
    if (!item->isVisible())
        return;
    items.append(item);
    for (auto *child : item->childItems())
        collect(child, items);
}

/// Also one that stays down, or a row that opens something.
bool isButton(QAccessible::Role role) {
    return role == QAccessible::Button || role == QAccessible::CheckBox ||
           role == QAccessible::RadioButton || role == QAccessible::ListItem;
}

QString accessibleName(QQuickItem *item) {
    auto *interface = QAccessible::queryAccessibleInterface(item);
    return interface ? interface->text(QAccessible::Name) : QString();
}

} // namespace

OpenWindow::OpenWindow(AppStore &store) : m_windows(m_engine, store) {
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QQuickStyle::setStyle(QStringLiteral("Basic"));
    QAccessible::setActive(true);
    m_engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    m_engine.addImageProvider(QStringLiteral("symbol"), new SymbolImages);
    m_windows.open();
}

OpenWindow::~OpenWindow() {
    qDeleteAll(windows());
    // What they had under way ends in the event loop.
    settleEventLoop();
}

QList<QQuickWindow *> OpenWindow::windows() const {
    QList<QQuickWindow *> result;
    for (auto *window : QGuiApplication::topLevelWindows()) {
        if (auto *quick = qobject_cast<QQuickWindow *>(window))
            result.append(quick);
    }
    return result;
}

QQuickWindow *OpenWindow::window() const {
    return windows().isEmpty() ? nullptr : windows().first();
}

QList<QQuickItem *> OpenWindow::visibleItems() const {
    QList<QQuickItem *> items;
    for (auto *window : windows())
        collect(window->contentItem(), items);
    return items;
}

bool OpenWindow::shows(const QString &name) const {
    const auto items = visibleItems();
    return std::any_of(items.begin(), items.end(),
                       [&](QQuickItem *item) { return accessibleName(item) == name; });
}

QList<QQuickItem *> OpenWindow::buttons(const QString &name) const {
    auto items = visibleItems();
    items.removeIf([&](QQuickItem *item) {
        auto *interface = QAccessible::queryAccessibleInterface(item);
        return !interface || !isButton(interface->role()) || accessibleName(item) != name;
    });
    return items;
}

QList<QQuickItem *> OpenWindow::ofType(const char *type) const {
    auto items = visibleItems();
    items.removeIf([&](QQuickItem *item) {
        return !QString::fromLatin1(item->metaObject()->className())
                    .startsWith(QLatin1String(type) + QLatin1String("_QML"));
    });
    return items;
}

bool OpenWindow::press(const QString &name) const {
    const auto found = buttons(name);
    if (found.isEmpty())
        return false;
    auto *action = QAccessible::queryAccessibleInterface(found.first())->actionInterface();
    if (!action)
        return false;
    auto names = action->actionNames();
    names.removeOne(QAccessibleActionInterface::setFocusAction());
    action->doAction(names.value(0));
    return true;
}

void OpenWindow::press(Qt::Key key, Qt::KeyboardModifiers modifiers) const {
    QTest::keyClick(window(), key, modifiers);
}
