#include "BuildSettings.h"
#include "app/Renderer.h"
#include "app/WindowOpener.h"
#include "platform/DesktopAppearance.h"
#include "platform/DesktopBrowser.h"
#include "platform/QtTransport.h"
#include "platform/SettingsPreferences.h"
#include "platform/SystemClock.h"
#include "presentation/Appearance.h"
#include "presentation/Fonts.h"
#include "presentation/SymbolImages.h"
#include "store/AppStore.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickStyle>
#include <QTimer>

#include <cstring>

namespace {

QString preferencesName() {
    const bool released = std::strcmp(BuildSettings::bundleId, "chat.quillmere.mac") == 0;
    return released ? QStringLiteral("Quillmere") : QStringLiteral("Quillmere.Local");
}

void followLanguage(const AppStore &store) {
    Fonts::shared().setLanguage(store.effectiveLanguage());
    QObject::connect(&store, &AppStore::languageChanged, &Fonts::shared(),
                     [&store] { Fonts::shared().setLanguage(store.effectiveLanguage()); });
}

} // namespace

int main(int argc, char **argv) {
    QGuiApplication::setApplicationName(QStringLiteral("Quillmere"));
    QGuiApplication::setApplicationVersion(QLatin1String(BuildSettings::version));
    QGuiApplication::setDesktopFileName(QLatin1String(BuildSettings::bundleId));
    QGuiApplication application(argc, argv);
    Renderer::choose();
    QQuickStyle::setStyle(QStringLiteral("Basic"));

    QtTransport transport;
    SettingsPreferences preferences(preferencesName());
    SystemClock clock;
    DesktopBrowser browser;
    DesktopAppearance desktop;
    const Platform platform{transport, preferences, clock, browser, desktop};

    const Appearance appearance(preferences, desktop);
    AppStore store(platform);
    followLanguage(store);

    QQmlEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine.addImageProvider(QStringLiteral("symbol"), new SymbolImages);
    QObject::connect(&engine, &QQmlEngine::quit, &application, &QGuiApplication::quit);

    WindowOpener windows(engine, store);
    if (!windows.open())
        return 1;
    QTimer::singleShot(0, &desktop, &DesktopAppearance::follow);
    return application.exec();
}
