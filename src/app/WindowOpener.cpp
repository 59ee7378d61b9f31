#include "app/WindowOpener.h"

#include "app/WindowMemory.h"
#include "store/AppStore.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

namespace {

/// By its module: only an import makes the toolkit register the module's C++ types.
std::unique_ptr<QQmlComponent> component(QQmlEngine &engine, const char *type) {
    auto result = std::make_unique<QQmlComponent>(&engine);
    result->setData(QByteArray("import Quillmere.Screens\n") + type + " {}", QUrl());
    return result;
}

} // namespace

WindowOpener::WindowOpener(QQmlEngine &engine, AppStore &store) : m_engine(engine), m_store(store) {
    engine.setIncubationController(&m_incubation);
}

WindowOpener::~WindowOpener() = default;

bool WindowOpener::open() {
    if (!m_component)
        m_component = component(m_engine, "MainWindow");
    auto *window = create(*m_component, m_memory ? m_memory->initialProperties() : QVariantMap());
    if (!window)
        return false;
    connect(window, SIGNAL(anotherWindowWanted()), this, SLOT(openAnother()));
    connect(window, SIGNAL(settingsWanted()), this, SLOT(openSettings()));
    connect(window, &QWindow::visibleChanged, this, [this, window](bool visible) {
        if (!visible && m_memory)
            m_memory->keep(*window);
    });
    return true;
}

void WindowOpener::openSettings() {
    if (!m_settings)
        m_settings = create(*component(m_engine, "SettingsWindow"), {});
    if (!m_settings)
        return;
    // Of the window that asked: it must not keep the program alive.
    m_settings->setTransientParent(qobject_cast<QQuickWindow *>(sender()));
    m_settings->raise();
    m_settings->requestActivate();
}

QQuickWindow *WindowOpener::create(QQmlComponent &component, QVariantMap properties) {
    properties.insert(QStringLiteral("store"), QVariant::fromValue(&m_store));
    QObject *object = nullptr;
    if (component.isReady())
        object = component.createWithInitialProperties(properties);
    auto *window = qobject_cast<QQuickWindow *>(object);
    if (!window) {
        qCritical("%s", qPrintable(component.errorString()));
        delete object;
        return nullptr;
    }
    window->setParent(nullptr);
    QQmlEngine::setObjectOwnership(window, QQmlEngine::CppOwnership);
    connect(window, &QWindow::visibleChanged, window, [window](bool visible) {
        if (!visible)
            window->deleteLater();
    });
    return window;
}

void WindowOpener::raise(const QString &activationToken) {
    auto windows = QGuiApplication::topLevelWindows();
    windows.removeIf([](const QWindow *window) {
        return !window->isVisible() || window->transientParent() ||
               !qobject_cast<const QQuickWindow *>(window);
    });
    if (windows.isEmpty())
        return;
    auto *window = windows.last();
    window->setWindowStates(window->windowStates() & ~Qt::WindowMinimized);
    window->raise();
    // The toolkit looks for the permission here, and nowhere else, and only on Wayland; programs
    // that are started later must not find a used one.
    constexpr auto variable = "XDG_ACTIVATION_TOKEN";
    if (!activationToken.isEmpty())
        qputenv(variable, activationToken.toUtf8());
    window->requestActivate();
    qunsetenv(variable);
}
