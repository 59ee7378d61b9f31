#pragma once

#include "app/WindowOpener.h"
#include "presentation/Appearance.h"
#include "store/AppStore.h"

#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickWindow>

/// The program's own window on a store, with what a person or a screen reader finds in it.
class OpenWindow final {
public:
    explicit OpenWindow(AppStore &store);
    ~OpenWindow();

    /// False when the window could not be made.
    bool openAnother() { return m_windows.open(); }

    QQuickWindow *window() const;
    QList<QQuickWindow *> windows() const;

    /// Whether a visible text or control of any window has this accessible name.
    bool shows(const QString &name) const;

    /// The visible buttons with this accessible name, in any window.
    QList<QQuickItem *> buttons(const QString &name) const;

    /// The visible items of a QML type such as "ArchiveRow".
    QList<QQuickItem *> ofType(const char *type) const;

    /// Presses the button of this name as an assistive technology does: by the first of its
    /// actions.
    bool press(const QString &name) const;

    /// Presses a key of the keyboard.
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const;
    /// What has the keyboard.
    QQuickItem *focus() const { return window()->activeFocusItem(); }

private:
    QList<QQuickItem *> visibleItems() const;

    QQmlEngine m_engine;
    WindowOpener m_windows;
};
