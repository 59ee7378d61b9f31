#pragma once

#include "bench/Measure.h"
#include "bench/TimedApplication.h"
#include "platform/QtTransport.h"
#include "tests/screens/OpenWindow.h"
#include "tests/store/StoreAccess.h"
#include "tests/support/Await.h"
#include "tests/support/TestPlatform.h"

#include <QEventLoop>

#include <memory>

/// The program with its own window on a library in memory, in which the main thread draws too. One
/// at a time: a frame is to be that of the only window.
class OpenProgram final {
public:
    /// A service that does not know the program's first requests is as good as none.
    OpenProgram(const QString &server, const LocalLibrary &library) {
        m_system.preferences.setValue(QStringLiteral("server"), server);
        m_store = std::make_unique<AppStore>(m_system.platform());
        StoreAccess::library(*m_store) = library;
        m_store->persist();
        m_window = std::make_unique<OpenWindow>(*m_store);
        require(eventually([this] { return m_store->notice().has_value(); }), "the refusal");
        m_store->dismissNotice();
        settleEventLoop();
    }

    AppStore &store() { return *m_store; }
    OpenWindow &window() { return *m_window; }

    void goTo(const QString &destination) {
        m_store->setDestination(destination);
        settleEventLoop();
    }

    /// Seconds that the main thread has worked from a change to the first frame in which it is
    /// seen.
    double untilSeen(const std::function<void()> &change, const std::function<bool()> &seen) {
        qint64 time = 0;
        QEventLoop loop;
        const auto before = TimedApplication::worked();
        const auto drawn =
            QObject::connect(m_window->window(), &QQuickWindow::frameSwapped, &loop, [&] {
                time = TimedApplication::worked() - before;
                if (seen())
                    loop.quit();
            });
        change();
        loop.exec();
        QObject::disconnect(drawn);
        settleEventLoop();
        return static_cast<double>(time) / 1e9;
    }

private:
    TestPlatform<QtTransport> m_system;
    std::unique_ptr<AppStore> m_store;
    std::unique_ptr<OpenWindow> m_window;
};
