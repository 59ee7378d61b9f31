#include "BuildSettings.h"
#include "app/Launch.h"
#include "app/Renderer.h"
#include "app/WindowMemory.h"
#include "app/WindowOpener.h"
#include "platform/DesktopAppearance.h"
#include "platform/DesktopBrowser.h"
#include "platform/DesktopBrowserSession.h"
#include "platform/DesktopCredentialStore.h"
#include "platform/KeyringModule.h"
#include "platform/QtTransport.h"
#include "platform/RunningInstance.h"
#include "platform/SessionBus.h"
#include "platform/SettingsPreferences.h"
#include "platform/Start.h"
#include "platform/SystemClock.h"
#include "platform/SystemFiles.h"
#include "platform/SystemRandom.h"
#include "presentation/Appearance.h"
#include "presentation/FontFiles.h"
#include "presentation/Fonts.h"
#include "presentation/SymbolImages.h"
#include "storage/LibraryDisk.h"
#include "store/AppStore.h"

#include <QGuiApplication>
#include <QQmlEngine>
#include <QQuickStyle>
#include <QThreadPool>
#include <QTimer>

namespace {

void followLanguage(const AppStore &store) {
    Fonts::shared().setLanguage(store.effectiveLanguage());
    QObject::connect(&store, &AppStore::languageChanged, &Fonts::shared(),
                     [&store] { Fonts::shared().setLanguage(store.effectiveLanguage()); });
}

void answerCalls(const RunningInstance &instance, DesktopBrowserSession &browserSession) {
    QObject::connect(&instance, &RunningInstance::called, qApp,
                     [&browserSession](const QStringList &addresses, const QString &token) {
                         for (const auto &address : addresses)
                             browserSession.deliver(address);
                         WindowOpener::raise(token);
                     });
}

} // namespace

int main(int argc, char **argv) {
    QGuiApplication::setApplicationName(QStringLiteral("Quillmere"));
    QGuiApplication::setApplicationVersion(QLatin1String(BuildSettings::version));
    QGuiApplication::setDesktopFileName(QLatin1String(BuildSettings::bundleId));
    const auto activationToken = Launch::activationToken();
    QGuiApplication application(argc, argv);
    // Beside the loading of the screens: the first text waits for it.
    QThreadPool::globalInstance()->start(&FontFiles::registerAll);
    Renderer::choose();
    QQuickStyle::setStyle(QStringLiteral("Basic"));

    QtTransport transport;
    const auto ownName = LibraryDisk::directoryName(QLatin1String(BuildSettings::bundleId));
    SettingsPreferences preferences(ownName);
    SystemClock clock;
    DesktopBrowser browser;
    DesktopBrowserSession browserSession(browser);
    SystemRandom random;
    DesktopAppearance desktop;
    SystemFiles files;
    const auto ownState = SystemFiles::stateDirectory() + u'/' + ownName;
    DesktopCredentialStore credentials(
        files, ownState, [] { return KeyringModule::open(QStringLiteral("Quillmere")); });
    const Platform platform{transport, preferences, clock,  browser,       desktop,
                            files,     credentials, random, browserSession};

    const Appearance appearance(preferences, desktop);
    AppStore store(platform);
    followLanguage(store);

    QQmlEngine engine;
    engine.addImportPath(QStringLiteral("qrc:/qt/qml"));
    engine.addImageProvider(QStringLiteral("symbol"), new SymbolImages);
    QObject::connect(&engine, &QQmlEngine::quit, &application, &QGuiApplication::quit);

    WindowMemory memory(files, ownState);
    WindowOpener windows(engine, store);
    windows.remember(memory);
    RunningInstance instance(SessionBus::connection(), QLatin1String(BuildSettings::bundleId));
    answerCalls(instance, browserSession);
#ifdef Q_OS_MACOS
    application.installEventFilter(&instance);
#endif
    start([&] { return Launch::openWindow(&instance, &windows, &files, activationToken); });
    QTimer::singleShot(0, &desktop, &DesktopAppearance::follow);
    const int code = application.exec();
    // A program that ends at once may still be taking up its fonts.
    QThreadPool::globalInstance()->waitForDone();
    return code;
}
