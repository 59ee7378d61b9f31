#include "bench/OpenProgram.h"

#include <QGuiApplication>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

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
                          .repeated(18) +
                      QString::number(at);
        result.messages.append(message);
    }
    return result;
}

/// The last message of the open conversation is in sight.
bool showsEnd(OpenProgram &program) {
    const auto texts = program.window().ofType("AnswerText");
    const auto last = program.store().chat().messages.last().content;
    return std::any_of(texts.begin(), texts.end(), [&](QQuickItem *text) {
        const auto place = text->mapRectToScene(text->boundingRect());
        return text->property("content") == last && place.top() >= 0 &&
               place.bottom() <= program.window().window()->height();
    });
}

} // namespace

int main(int argc, char **argv) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QGuiApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);

    std::unique_ptr<OpenProgram> program;
    const auto longTalk = conversation(0, 200);
    const auto begin = [&](const QList<Conversation> &conversations) {
        program.reset();
        LocalLibrary library;
        library.conversations = conversations;
        program = std::make_unique<OpenProgram>(u"http://127.0.0.1:1"_s, library);
    };
    measureItself("open/200 messages", [&] {
        begin({longTalk});
        return program->untilSeen([&] { program->store().openChat(longTalk); },
                                  [&] { return showsEnd(*program); });
    });

    QList<Conversation> many;
    for (int number = 0; number < 10'000; ++number)
        many.append(conversation(number, 4));
    const auto typed = [&](const QString &query) {
        const auto fields = program->window().ofType("SearchEntry");
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
    measureItself("filter/first key", [&] { return filter({u"d"_s}); });
    measureItself("filter/next key", [&] { return filter({u"d"_s, u"da"_s}); });
    measureItself("filter/one key back", [&] {
        return filter({u"d"_s, u"da"_s, u"dam"_s, u"da"_s});
    });
    benchmark::RunSpecifiedBenchmarks();
}
