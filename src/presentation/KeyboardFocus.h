#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtQmlIntegration>

/// Follows the keyboard from control to control, and leads it among those within one item. A
/// control that was pressed with the mouse does not count.
class KeyboardFocus : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem *within READ within WRITE setWithin REQUIRED FINAL)

public:
    using QObject::QObject;

    QQuickItem *within() const { return m_within; }
    /// To be set once.
    void setWithin(QQuickItem *item);

    /// Gives the keyboard to the control after or before the one that has it; at the last one it
    /// stays.
    Q_INVOKABLE void step(bool forward);
    /// Gives the keyboard to the last control or the first.
    Q_INVOKABLE void goToEnd(bool forward);

Q_SIGNALS:
    /// The keyboard has come to an item somewhere within the given one.
    void moved(QQuickItem *item);

private:
    void watch(QQuickWindow *window);
    void look();
    /// Null at either end.
    QQuickItem *neighbour(QQuickItem *item, bool forward) const;

    QPointer<QQuickItem> m_within;
    QPointer<QQuickWindow> m_window;
};
