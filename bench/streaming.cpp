#include "bench/FixedService.h"
#include "bench/Measure.h"
#include "bench/SignedInStore.h"
#include "bench/TimedApplication.h"
#include "presentation/AnswerDocument.h"
#include "records/Json.h"
#include "service/LineReader.h"
#include "tests/support/MemoryFiles.h"

#include <QEventLoop>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QTextDocument>

#include <memory>

namespace {

/// Words of some six letters, here and there a strong one, and a paragraph every hundred.
QByteArray piece(int number) {
    if (number % 100 == 99)
        return "\\n\\n";
    return number % 25 == 0 ? "**strong** " : "words ";
}

/// A long answer as it arrives, and its text.
struct Answer {
    QByteArray body;
    QString text;

    explicit Answer(int pieces) {
        for (int number = 0; number < pieces; ++number) {
            body += R"({"type":"delta","text":")" + piece(number) + "\"}\n";
            text += QString::fromLatin1(piece(number))
                        .replace(QLatin1String("\\n"), QLatin1String("\n"));
        }
        body += "{\"type\":\"done\"}\n";
    }
};

/// The program as far as it has to do with an answer: transport, store, model, and the text that
/// shows the last message.
class Program final {
public:
    explicit Program(const QString &server) : m_store(server) {
        QObject::connect(&*m_store, &AppStore::chattingChanged, &m_loop, [this] {
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
    SignedInStore<MemoryFiles> m_store;
    QEventLoop m_loop;
    QQmlEngine m_engine;
    std::unique_ptr<QObject> m_edit;
    AnswerDocument m_answer;
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

/// The longest step of a whole answer counts as the time of a round.
void measureStep(const std::string &name, TimedApplication &application, Program *program) {
    measureItself(name, [program, &application] {
        program->prepare();
        application.takeLongest();
        program->run();
        return application.takeLongest();
    });
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    TimedApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);

    using Pace = FixedService::Pace;
    std::vector<std::unique_ptr<FixedService>> services;
    std::vector<std::unique_ptr<Program>> programs;
    const auto program = [&](const FixedService &service) {
        return programs.emplace_back(std::make_unique<Program>(service.base())).get();
    };
    for (const int pieces : {20'000, 100'000}) {
        const Answer answer(pieces);
        const auto &service =
            *services.emplace_back(std::make_unique<FixedService>(answer.body, Pace::flood));
        auto *bare = program(service);
        auto *shown = program(service);
        shown->show();
        for (auto *each : {bare, shown}) {
            each->run();
            require(each->answer() == answer.text, "the answer");
        }
        require(readBare(service.base()) == answer.text, "the reference");
        require(shown->shown() == QString(answer.text).remove(QLatin1String("**")),
                "the shown answer");

        const auto name = std::to_string(pieces) + " pieces";
        const auto base = service.base();
        measure(
            "stream/" + name + "/codec", [bare] { bare->run(); }, [bare] { bare->prepare(); });
        measure("stream/" + name + "/reference",
                [base] { benchmark::DoNotOptimize(readBare(base)); });
        measure(
            "show/" + name, [shown] { shown->run(); }, [shown] { shown->prepare(); });
        measureStep("step/" + name + " at once", application, bare);
    }
    const auto &steady =
        *services.emplace_back(std::make_unique<FixedService>(Answer(20'000).body, Pace::steady));
    auto *shown = program(steady);
    shown->show();
    measureStep("step/20000 pieces steadily", application, shown);
    benchmark::RunSpecifiedBenchmarks();
}
