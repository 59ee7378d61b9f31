#pragma once

#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>
#include <QtQmlIntegration>

/// Follows the keyboard from control to control. A control that was pressed with the mouse does not
/// count.
class KeyboardFocus : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickItem *within READ within WRITE setWithin REQUIRED FINAL)

public:
    using QObject::QObject;

    QQuickItem *within() const { return m_within; }
    /// To be set once.
    void setWithin(QQuickItem *item);

Q_SIGNALS:
    /// The keyboard has come to an item somewhere within the given one.
    void moved(QQuickItem *item);

private:
    void watch(QQuickWindow *window);
    void look();

    QPointer<QQuickItem> m_within;
    QPointer<QQuickWindow> m_window;
};
