#include "bench/StreamingService.h"
#include "platform/QtTransport.h"
#include "platform/SystemClock.h"
#include "presentation/AnswerDocument.h"
#include "records/Json.h"
#include "service/LineReader.h"
#include "tests/store/StoreAccess.h"
#include "tests/support/FixedAppearance.h"
#include "tests/support/FixedRandom.h"
#include "tests/support/MemoryCredentials.h"
#include "tests/support/MemoryFiles.h"
#include "tests/support/MemoryPreferences.h"
#include "tests/support/RecordingBrowser.h"
#include "tests/support/RecordingBrowserSession.h"

#include <QEventLoop>
#include <QGuiApplication>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QTextDocument>
#include <QThread>

#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <memory>
#include <time.h>

namespace {

void require(bool holds, const char *what) {
    if (holds)
        return;
    std::fprintf(stderr, "Not as it should be: %s\n", what);
    std::exit(1);
}

/// Nanoseconds that this thread has worked.
qint64 worked() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return time.tv_sec * 1'000'000'000LL + time.tv_nsec;
}

/// Knows the most that the main thread has worked on one event.
class TimedApplication final : public QGuiApplication {
public:
    using QGuiApplication::QGuiApplication;

    bool notify(QObject *receiver, QEvent *event) override {
        if (m_inside || QThread::currentThread() != thread())
            return QGuiApplication::notify(receiver, event);
        m_inside = true;
        const auto before = worked();
        const bool result = QGuiApplication::notify(receiver, event);
        m_longest = std::max(m_longest, worked() - before);
        m_inside = false;
        return result;
    }

    /// Seconds, since the last call.
    double takeLongest() { return static_cast<double>(std::exchange(m_longest, 0)) / 1e9; }

private:
    bool m_inside = false;
    qint64 m_longest = 0;
};

/// The program as far as it has to do with an answer: transport, store, model, and the text that
/// shows the last message.
class Program final {
public:
    explicit Program(const QString &server) {
        m_preferences.setValue(QStringLiteral("server"), server);
        m_store = std::make_unique<AppStore>(Platform{m_transport, m_preferences, m_clock,
                                                      m_browser, m_appearance, m_files,
                                                      m_credentials, m_random, m_browserSession});
        StoreAccess::setAccount(*m_store, QStringLiteral("user"));
        m_store->loadLibrary();
        QObject::connect(m_store.get(), &AppStore::chattingChanged, &m_loop, [this] {
            if (!m_store->isChatting())
                m_loop.quit();
        });
    }

    /// From now on the answer is laid out as on a screen.
    void show() {
        QQmlComponent component(&m_engine);
        component.setData("import QtQuick\nTextEdit { readOnly: true; width: 820; wrapMode: "
                          "TextEdit.Wrap; font.pixelSize: 20 }",
                          QUrl());
        m_edit.reset(component.create());
        require(m_edit != nullptr, "the text");
        m_answer.setDocument(m_edit->property("textDocument").value<QQuickTextDocument *>());
        auto *model = m_store->messageModel();
        QObject::connect(model, &QAbstractItemModel::dataChanged, &m_answer, [this, model] {
            const auto last = model->index(model->rowCount() - 1, 0);
            m_answer.setText(last.data(MessageModel::content).toString());
        });
    }

    /// Forgets the last answer, so that the library does not grow.
    void prepare() {
        m_store->deleteConversation(m_store->chat());
        m_answer.setText(QString());
    }

    void run() {
        m_store->startChat(QStringLiteral("Why?"));
        m_loop.exec();
    }

    const QString &answer() const { return m_store->chat().messages.last().content; }
    QString shown() const { return m_answer.document()->textDocument()->toPlainText(); }

private:
    QtTransport m_transport;
    MemoryPreferences m_preferences;
    SystemClock m_clock;
    RecordingBrowser m_browser;
    FixedAppearance m_appearance;
    MemoryFiles m_files;
    MemoryCredentials m_credentials;
    FixedRandom m_random;
    RecordingBrowserSession m_browserSession;
    QEventLoop m_loop;
    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_edit;
    AnswerDocument m_answer;
    std::unique_ptr<AppStore> m_store;
};

/// The reference: the whole reply at once, over the toolkit alone, and a plain loop over its lines.
QString readBare(const QString &server) {
    QNetworkAccessManager manager;
    QNetworkRequest request(QUrl(server + QStringLiteral("/v1/chat/runs")));
    request.setRawHeader("Content-Type", "application/json");
    auto *reply = manager.post(request, QByteArrayLiteral("{}"));
    QEventLoop loop;
    QObject::connect(reply, &QNetworkReply::finished, &loop, &QEventLoop::quit);
    loop.exec();
    QString answer;
    for (const auto &line : reply->readAll().split('\n')) {
        if (!line.isEmpty())
            answer += Json::decode<ChatEvent>(line).text.value_or(QString());
    }
    return answer;
}

/// `prepare` runs before each round and is not timed.
void measure(const std::string &name, const std::function<void()> &round,
             const std::function<void()> &prepare) {
    benchmark::RegisterBenchmark(name.c_str(), [=](benchmark::State &state) {
        for (auto turn : state) {
            Q_UNUSED(turn)
            state.PauseTiming();
            prepare();
            state.ResumeTiming();
            round();
        }
    })->Unit(benchmark::kMillisecond);
}

/// The longest step of a whole answer counts as the time of a round.
void measureStep(const std::string &name, TimedApplication &application, Program *program) {
    benchmark::RegisterBenchmark(name.c_str(),
                                 [=, &application](benchmark::State &state) {
                                     for (auto turn : state) {
                                         Q_UNUSED(turn)
                                         program->prepare();
                                         application.takeLongest();
                                         program->run();
                                         state.SetIterationTime(application.takeLongest());
                                     }
                                 })
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime()
        ->Iterations(1);
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    TimedApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);

    using Pace = StreamingService::Pace;
    std::vector<std::unique_ptr<StreamingService>> services;
    std::vector<std::unique_ptr<Program>> programs;
    const auto program = [&](const StreamingService &service) {
        return programs.emplace_back(std::make_unique<Program>(service.base())).get();
    };
    for (const int pieces : {20'000, 100'000}) {
        const auto &service =
            *services.emplace_back(std::make_unique<StreamingService>(pieces, Pace::flood));
        auto *bare = program(service);
        auto *shown = program(service);
        shown->show();
        for (auto *each : {bare, shown}) {
            each->run();
            require(each->answer() == service.answer(), "the answer");
        }
        require(readBare(service.base()) == service.answer(), "the reference");
        require(shown->shown() == service.answer().remove(QLatin1String("**")), "the shown answer");

        const auto name = std::to_string(pieces) + " pieces";
        const auto base = service.base();
        measure(
            "stream/" + name + "/codec", [bare] { bare->run(); }, [bare] { bare->prepare(); });
        measure(
            "stream/" + name + "/reference", [base] { benchmark::DoNotOptimize(readBare(base)); },
            [] {});
        measure(
            "show/" + name, [shown] { shown->run(); }, [shown] { shown->prepare(); });
        measureStep("step/" + name + " at once", application, bare);
    }
    const auto &steady =
        *services.emplace_back(std::make_unique<StreamingService>(20'000, Pace::steady));
    auto *shown = program(steady);
    shown->show();
    measureStep("step/20000 pieces steadily", application, shown);
    benchmark::RunSpecifiedBenchmarks();
}
