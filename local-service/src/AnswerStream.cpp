#include "AnswerStream.h"

#include "TextTables.h"

#include <array>

namespace {

using namespace std::chrono_literals;
using AnswerStream::event;
using AnswerStream::Step;

/// Long enough to be seen, and short enough for the first words to come within half a second.
constexpr auto searchPause = 120ms;
constexpr auto readPause = 200ms;
/// Few enough words and short enough pauses for an answer to run like text that is being written.
constexpr std::array wordsOfPiece = {4, 3, 5, 4, 6};
constexpr auto piecePause = 25ms;
constexpr auto wordPause = 3ms;

Step progress(std::chrono::milliseconds pause, const QString &summary) {
    Step step{pause, event("progress")};
    step.event.summary = summary;
    return step;
}

/// The position behind the next so many words and the blanks that follow them.
qsizetype endOfPiece(const QString &text, qsizetype begin, int words) {
    qsizetype end = begin;
    for (int word = 0; word < words && end < text.size(); ++word) {
        while (end < text.size() && !text[end].isSpace())
            ++end;
        while (end < text.size() && text[end].isSpace())
            ++end;
    }
    return end;
}

QList<Step> pieces(const QString &text) {
    QList<Step> steps;
    qsizetype begin = 0;
    for (std::size_t number = 0; begin < text.size(); ++number) {
        const int words = wordsOfPiece[number % wordsOfPiece.size()];
        const auto end = endOfPiece(text, begin, words);
        Step step{piecePause + words * wordPause, event("delta")};
        step.event.text = text.mid(begin, end - begin);
        steps.append(step);
        begin = end;
    }
    return steps;
}

} // namespace

ChatEvent AnswerStream::event(const char *type) {
    ChatEvent event;
    event.type = QLatin1String(type);
    return event;
}

QList<Step> AnswerStream::opening(const TextTables &words, const Inquiry &inquiry,
                                  const QList<CaseCard> &references) {
    auto search = progress(0ms, words.text(QStringLiteral("answer.searching"), inquiry.language));
    if (inquiry.archives.size() == 1)
        search.event.archive = inquiry.archives.first();
    QList<Step> steps = {search};
    if (!references.isEmpty())
        steps.append(
            progress(searchPause, words.text(QStringLiteral("answer.reading"), inquiry.language)));
    Step cases{readPause, event("references")};
    cases.event.items = references;
    steps.append(cases);
    return steps;
}

QList<Step> AnswerStream::steps(const TextTables &words, const Inquiry &inquiry,
                                const Answer &answer) {
    auto steps = opening(words, inquiry, answer.references);
    steps.last().event.mode = QStringLiteral("evidence-preview");
    steps += pieces(answer.text);
    steps.append({0ms, event("done")});
    return steps;
}
