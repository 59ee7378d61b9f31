#pragma once

#include "app/Incubation.h"

#include <QObject>

#include <QPointer>

#include <memory>

class AppStore;
class QQmlComponent;
class QQmlEngine;
class QQuickWindow;
class WindowMemory;

/// Opens main windows, all of them on the one store, and the one window of settings. The program
/// ends with the last main window.
class WindowOpener final : public QObject {
    Q_OBJECT

public:
    WindowOpener(QQmlEngine &engine, AppStore &store);
    ~WindowOpener() override;

    /// Lets each window open as the last one was left. The memory must outlive the windows.
    void remember(WindowMemory &memory) { m_memory = &memory; }

    /// False when the window could not be made.
    bool open();

    /// Brings the last window to the front, on desktops that ask for one with their permission.
    static void raise(const QString &activationToken);

private Q_SLOTS:
    void openAnother() { open(); }
    void openSettings();

private:
    QQuickWindow *create(QQmlComponent &component, QVariantMap properties);

    QQmlEngine &m_engine;
    AppStore &m_store;
    Incubation m_incubation;
    WindowMemory *m_memory = nullptr;
    std::unique_ptr<QQmlComponent> m_component;
    QPointer<QQuickWindow> m_settings;
};
