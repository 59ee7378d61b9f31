#pragma once

#include "app/Incubation.h"

#include <QObject>

class AppStore;
class QQmlComponent;
class QQmlEngine;

/// Opens main windows, all of them on the one store. The program ends with the last of them.
class WindowOpener final : public QObject {
    Q_OBJECT

public:
    WindowOpener(QQmlEngine &engine, AppStore &store);
    ~WindowOpener() override;

    /// False when the window could not be made.
    bool open();

    /// Brings the last window to the front, on desktops that ask for one with their permission.
    static void raise(const QString &activationToken);

private Q_SLOTS:
    void openAnother() { open(); }

private:
    QQmlEngine &m_engine;
    AppStore &m_store;
    Incubation m_incubation;
    std::unique_ptr<QQmlComponent> m_component;
};
