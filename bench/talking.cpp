#include "platform/QtTransport.h"
#include "tests/screens/OpenWindow.h"
#include "tests/store/StoreAccess.h"
#include "tests/support/Await.h"
#include "tests/support/TestPlatform.h"

#include <QEventLoop>
#include <QGuiApplication>

#include <algorithm>
#include <benchmark/benchmark.h>
#include <cstdio>
#include <cstdlib>
#include <ctime>

using namespace Qt::StringLiterals;

namespace {

void require(bool holds, const char *what) {
    if (holds)
        return;
    std::fprintf(stderr, "Not as it should be: %s\n", what);
    std::exit(1);
}

/// Nanoseconds that this thread, which also draws, has worked.
qint64 worked() {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return time.tv_sec * 1'000'000'000LL + time.tv_nsec;
}

/// The talk of `messages` messages: a short question and an answer of some 1,200 characters in
/// turn.
Conversation conversation(int number, int messages) {
    static const QString subjects[] = {u"bridges"_s,  u"dams"_s,  u"ledgers"_s,
                                       u"vaccines"_s, u"looms"_s, u"telegraphs"_s};
    Conversation result;
    const auto subject = subjects[number % 6];
    result.title = u"Why did the %1 of %2 fail?"_s.arg(subject).arg(1600 + number % 400);
    for (int at = 0; at < messages; ++at) {
        ChatMessage message;
        message.role = at % 2 == 0 ? u"user"_s : u"assistant"_s;
        message.content =
            at % 2 == 0
                ? u"And what of the %1, case %2?"_s.arg(subject).arg(number * 7 + at)
                : u"The **report** on the %1 names *three* causes, as cases before it do. "_s
                      .arg(subject)
                      .repeated(18);
        result.messages.append(message);
    }
    return result;
}

/// The program with its own window on libraries in memory; no service answers it.
class Program final {
public:
    explicit Program(const QList<Conversation> &conversations) {
        m_system.preferences.setValue(u"server"_s, u"http://127.0.0.1:1"_s);
        m_store = std::make_unique<AppStore>(m_system.platform());
        StoreAccess::library(*m_store).conversations = conversations;
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

    /// The last message of the conversation is in sight.
    bool showsEnd() {
        const auto texts = m_window->ofType(u"AnswerText"_s);
        return std::any_of(texts.begin(), texts.end(), [this](QQuickItem *text) {
            const auto place = text->mapRectToScene(text->boundingRect());
            return text->property("content") == m_store->chat().messages.last().content &&
                   place.top() >= 0 && place.bottom() <= m_window->window()->height();
        });
    }

    /// Seconds of work from a change to the first frame in which it is seen.
    double untilSeen(const std::function<void()> &change, const std::function<bool()> &seen) {
        qint64 time = 0;
        QEventLoop loop;
        const auto before = worked();
        const auto drawn =
            QObject::connect(m_window->window(), &QQuickWindow::frameSwapped, &loop, [&] {
                time = worked() - before;
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

void measure(const std::string &name, const std::function<double()> &round) {
    benchmark::RegisterBenchmark(name.c_str(),
                                 [=](benchmark::State &state) {
                                     for (auto turn : state) {
                                         Q_UNUSED(turn)
                                         state.SetIterationTime(round());
                                     }
                                 })
        ->Unit(benchmark::kMillisecond)
        ->UseManualTime()
        ->Iterations(1);
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);

    // One at a time: a frame is to be that of the only window.
    std::unique_ptr<Program> program;
    const auto longTalk = conversation(0, 200);
    const auto begin = [&](const QList<Conversation> &conversations) {
        program.reset();
        program = std::make_unique<Program>(conversations);
    };
    measure("open/200 messages", [&] {
        begin({longTalk});
        return program->untilSeen([&] { program->store().openChat(longTalk); },
                                  [&] { return program->showsEnd(); });
    });

    QList<Conversation> many;
    for (int number = 0; number < 10'000; ++number)
        many.append(conversation(number, 4));
    const auto typed = [&](const QString &query) {
        const auto fields = program->window().ofType(u"SearchEntry"_s);
        require(fields.size() == 1, "the filter");
        return program->untilSeen([&] { fields.first()->setProperty("text", query); },
                                  [] { return true; });
    };
    /// Seconds that the last of the texts takes, typed one after the other.
    const auto filter = [&](const QStringList &queries) {
        begin(many);
        program->goTo(u"history"_s);
        double time = 0;
        for (const auto &query : queries)
            time = typed(query);
        return time;
    };
    measure("filter/first key", [&] { return filter({u"d"_s}); });
    measure("filter/next key", [&] { return filter({u"d"_s, u"da"_s}); });
    measure("filter/one key back", [&] { return filter({u"d"_s, u"da"_s, u"dam"_s, u"da"_s}); });
    benchmark::RunSpecifiedBenchmarks();
}
