#include "app/WindowOpener.h"
#include "bench/Measure.h"
#include "bench/ReadingService.h"
#include "bench/TimedApplication.h"
#include "platform/QtTransport.h"
#include "presentation/FontFiles.h"
#include "presentation/SymbolImages.h"
#include "screens/CaseReaderModel.h"
#include "service/Endpoints.h"
#include "tests/support/TestPlatform.h"

#include <QElapsedTimer>
#include <QEventLoop>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickStyle>
#include <QQuickWindow>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

void wait(int milliseconds) {
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    loop.exec();
}

QQuickItem *visibleItem(QQuickItem *above, const char *type) {
    if (!above->isVisible())
        return nullptr;
    if (QByteArray(above->metaObject()->className()).startsWith(QByteArray(type) + "_QML"))
        return above;
    for (auto *child : above->childItems()) {
        if (auto *found = visibleItem(child, type))
            return found;
    }
    return nullptr;
}

/// The whole program on the software renderer, without a screen.
class Program final {
public:
    explicit Program(const QString &server) {
        m_system.preferences.setValue(u"server"_s, server);
        m_store = std::make_unique<AppStore>(m_system.platform());
        m_engine.addImportPath(u"qrc:/qt/qml"_s);
        m_engine.addImageProvider(u"symbol"_s, new SymbolImages);
        m_windows = std::make_unique<WindowOpener>(m_engine, *m_store);
        require(m_windows->open(), "the window");
        m_window = qobject_cast<QQuickWindow *>(QGuiApplication::topLevelWindows().first());
        require(m_window && until([&] { return m_store->isConnected(); }), "the connection");
    }
    ~Program() { delete m_window; }
    Q_DISABLE_COPY_MOVE(Program)

    AppStore &store() { return *m_store; }
    QQuickWindow *window() { return m_window; }
    QQuickItem *item(const char *type) { return visibleItem(m_window->contentItem(), type); }

    static bool until(const std::function<bool()> &holds) {
        QElapsedTimer clock;
        for (clock.start(); !holds() && clock.elapsed() < 20'000;)
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents, 20);
        return holds();
    }

    /// Shows an archive and its cards.
    void browse(const QString &archive) {
        m_store->setDestination(archive);
        require(until([&] { return item("CaseRow") != nullptr; }), "the cards");
        wait(300);
    }

    void pressCard(int number) {
        auto *row = item("CaseRow")->parentItem()->childItems().value(number);
        QTest::mouseClick(m_window, Qt::LeftButton, {},
                          row->mapToScene({row->width() / 2, 20}).toPoint());
    }

private:
    TestPlatform<QtTransport> m_system;
    std::unique_ptr<AppStore> m_store;
    QQmlEngine m_engine;
    std::unique_ptr<WindowOpener> m_windows;
    QQuickWindow *m_window = nullptr;
};

struct Opening {
    double firstText = 0;
    double wholeText = 0;
    /// That ended after the case had come, up to the one with its text.
    int frames = 0;
};

/// From the press on a card to the frames with its title and with its text. Seconds.
Opening open(Program &program, int card) {
    Opening result;
    bool isLoaded = false;
    bool isDone = false;
    QElapsedTimer clock;
    QObject scope;
    QObject::connect(program.window(), &QQuickWindow::frameSwapped, &scope, [&] {
        if (isDone || !program.item("ReaderHeader"))
            return;
        const auto now = static_cast<double>(clock.nsecsElapsed()) / 1e9;
        if (result.firstText == 0)
            result.firstText = now;
        if (isLoaded)
            ++result.frames;
        if (program.item("ReaderBody")) {
            result.wholeText = now;
            isDone = true;
        }
    });
    clock.start();
    program.pressCard(card);
    const auto *model = program.item("CaseReaderView")->findChild<CaseReaderModel *>();
    require(model != nullptr, "the reader");
    QObject::connect(model, &CaseReaderModel::entryChanged, &scope, [&] { isLoaded = true; });
    require(Program::until([&] { return isDone; }), "the case");
    wait(100);
    return result;
}

/// The request alone, as the reader makes it. Seconds.
Task<void> fetch(API api, QString path, QEventLoop *loop) {
    const std::vector<QueryItem> query{{u"locale"_s, u"en"_s}};
    auto fetching = api.get<CaseEntry>(path, query, {});
    const CaseEntry entry = co_await fetching;
    require(!entry.sections.isEmpty(), "the case");
    loop->quit();
}

double request(Program &program) {
    QElapsedTimer clock;
    clock.start();
    QEventLoop loop;
    auto fetching = fetch(program.store().api(), Endpoint::caseEntry(u"foible"_s, u"0"_s), &loop);
    loop.exec();
    return static_cast<double>(clock.nsecsElapsed()) / 1e9;
}

struct Fling {
    double median = 0;
    double ninetyFifth = 0;
};

/// Work of the main thread from frame to frame while the cards of an archive fly by. Seconds.
Fling fling(Program &program, const QString &archive) {
    program.browse(archive);
    auto *list = program.item("CaseList");
    std::vector<double> frames;
    qint64 before = TimedApplication::worked();
    QObject scope;
    QObject::connect(program.window(), &QQuickWindow::frameSwapped, &scope, [&] {
        const auto now = TimedApplication::worked();
        frames.push_back(static_cast<double>(now - before) / 1e9);
        before = now;
    });
    for (int turn = 0; turn < 4; ++turn) {
        QMetaObject::invokeMethod(list, "flick", Q_ARG(qreal, 0),
                                  Q_ARG(qreal, turn < 2 ? -9000 : 9000));
        wait(1000);
    }
    require(frames.size() > 50, "frames");
    frames.erase(frames.begin());
    std::sort(frames.begin(), frames.end());
    return {frames[frames.size() / 2], frames[frames.size() * 95 / 100]};
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    TimedApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    FontFiles::registerAll();
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    QQuickStyle::setStyle(u"Basic"_s);

    ReadingService service;
    Program program(service.base());
    program.browse(u"few"_s);
    // Makes the code and the connections warm.
    open(program, 1);
    request(program);

    int card = 0;
    const auto openNext = [&] { return open(program, card = 1 - card); };
    measureItself("open/first text", [&] { return openNext().firstText; });
    measureItself("open/whole text/codec", [&] { return openNext().wholeText; });
    measureItself("open/whole text/reference", [&] { return request(program); });
    // Not a time: so many frames, as if each took a millisecond.
    measureItself("frames/after the reply", [&] { return openNext().frames / 1e3; });
    measureItself("step/opening 46 KB", [&] {
        application.takeLongest();
        openNext();
        return application.takeLongest();
    });
    int change = 1;
    measureItself("step/text size of 46 KB", [&] {
        auto *page = program.item("ReaderBody");
        while (page && !page->property("contentY").isValid())
            page = page->parentItem();
        require(page != nullptr, "the page");
        page->setProperty("contentY", page->property("contentHeight").toReal() / 2);
        wait(100);
        application.takeLongest();
        QTimer::singleShot(0, [&] {
            program.store().setReadingSize(program.store().readingSize() + change);
            change = -change;
        });
        wait(400);
        return application.takeLongest();
    });
    for (const auto *archive : {"many", "few"}) {
        const std::string kind = archive == std::string("many") ? "/codec" : "/reference";
        const auto id = QString::fromLatin1(archive);
        measureItself("fling/median frame of 100,000 cards" + kind,
                      [&, id] { return fling(program, id).median; });
        measureItself("fling/slow frame of 100,000 cards" + kind,
                      [&, id] { return fling(program, id).ninetyFifth; });
    }
    benchmark::RunSpecifiedBenchmarks();
}
