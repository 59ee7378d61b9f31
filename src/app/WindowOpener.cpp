#include "app/WindowOpener.h"

#include "store/AppStore.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickWindow>

WindowOpener::WindowOpener(QQmlEngine &engine, AppStore &store) : m_engine(engine), m_store(store) {
    engine.setIncubationController(&m_incubation);
}

WindowOpener::~WindowOpener() = default;

bool WindowOpener::open() {
    if (!m_component) {
        // By its module: only an import makes the toolkit register the module's C++ types.
        m_component = std::make_unique<QQmlComponent>(&m_engine);
        m_component->setData("import Quillmere.Screens\nMainWindow {}", QUrl());
    }
    QObject *object = nullptr;
    if (m_component->isReady())
        object = m_component->createWithInitialProperties(
            {{QStringLiteral("store"), QVariant::fromValue(&m_store)}});
    auto *window = qobject_cast<QQuickWindow *>(object);
    if (!window) {
        qCritical("%s", qPrintable(m_component->errorString()));
        delete object;
        return false;
    }
    window->setParent(nullptr);
    QQmlEngine::setObjectOwnership(window, QQmlEngine::CppOwnership);
    connect(window, SIGNAL(anotherWindowWanted()), this, SLOT(openAnother()));
    connect(window, &QWindow::visibleChanged, window, [window](bool visible) {
        if (!visible)
            window->deleteLater();
    });
    return true;
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
