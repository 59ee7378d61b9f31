#include "ModelWriter.h"

#include "AnswerStream.h"
#include "Answerer.h"
#include "ModelExchange.h"
#include "ModelPrompt.h"

#include <cstdio>

namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;
using Kind = ModelExchange::Arrival::Kind;

/// How long a client that has gone is taken for one that listens.
constexpr auto longestWait = 100ms;

class ModelAnswer final : public AnswerInProgress {
public:
    ModelAnswer(const TextTables &words, const Inquiry &inquiry, const QList<CaseCard> &references,
                const ModelSettings &settings, const QList<ChatRequest::Message> &messages)
        : m_words(words),
          m_language(inquiry.language),
          m_opening(AnswerStream::opening(words, inquiry, references)),
          m_longestSilence(settings.longestSilence),
          m_exchange(settings, messages) {}

    std::optional<ChatEvent> next() override {
        // Without their pauses: the model takes its own time.
        if (!m_opening.isEmpty())
            return m_opening.takeFirst().event;
        const auto arrival = m_exchange.await(longestWait);
        if (!arrival)
            return whileSilent();
        m_lastArrival = Clock::now();
        switch (arrival->kind) {
        case Kind::Text:
            m_hasText = true;
            return delta(arrival->text);
        case Kind::End:
            return AnswerStream::event("done");
        case Kind::Failure:
            break;
        }
        return failure(m_hasText ? "answer.modelBrokeOff" : "answer.modelUnavailable");
    }

private:
    static ChatEvent delta(const QString &text) {
        auto event = AnswerStream::event("delta");
        event.text = text;
        return event;
    }

    std::optional<ChatEvent> whileSilent() const {
        if (Clock::now() - m_lastArrival < m_longestSilence)
            return std::nullopt;
        std::fprintf(stderr, "The model gave no whole answer: it is silent\n");
        return failure("answer.modelSilent");
    }

    ChatEvent failure(const char *sentence) const {
        auto event = AnswerStream::event("error");
        event.message = m_words.text(QLatin1String(sentence), m_language);
        return event;
    }

    const TextTables &m_words;
    AppLanguage m_language;
    QList<AnswerStream::Step> m_opening;
    std::chrono::milliseconds m_longestSilence;
    Clock::time_point m_lastArrival = Clock::now();
    bool m_hasText = false;
    ModelExchange m_exchange;
};

} // namespace

ModelWriter::ModelWriter(ModelSettings settings, const Answerer &answerer,
                         const AnswerWriter &nothingFound)
    : m_settings(std::move(settings)), m_answerer(answerer), m_nothingFound(nothingFound) {}

std::unique_ptr<AnswerInProgress>
ModelWriter::write(const ChatRequest &request, const Inquiry &inquiry, const Answer &found) const {
    if (found.references.isEmpty())
        return m_nothingFound.write(request, inquiry, found);
    QList<CaseData::WrittenCase> evidence;
    for (const CaseCard &card : found.references)
        evidence.append(m_answerer.cases().find(card.archive, card.id)->written);
    return std::make_unique<ModelAnswer>(m_answerer.words(), inquiry, found.references, m_settings,
                                         ModelPrompt::messages(request, inquiry, evidence));
}
