#include "ChatRoutes.h"

#include "AccountStore.h"
#include "AnswerStream.h"
#include "Answerer.h"
#include "QuestionQuota.h"
#include "Router.h"
#include "RunLimit.h"

#include "records/JsonDecoder.h"

namespace {

/// Whatever the program shows of it, the asker shall be able to read it.
RequestError failure(const Answerer &answerer, const Inquiry &inquiry, int status, const char *code,
                     const char *sentence) {
    return {
        status, QLatin1String(code),
        answerer.words()
            .text(QLatin1String(sentence), inquiry.language)
            .replace(QStringLiteral("{limit}"), QString::number(QuestionQuota::questionsPerDay))};
}

/// An answer on its way to one client.
class Run final {
public:
    Run(QList<AnswerStream::Step> steps, Pause pause, RunLimit::Place place)
        : m_steps(std::move(steps)), m_pause(std::move(pause)), m_place(std::move(place)) {}

    /// Absent when all has been sent.
    std::optional<QByteArray> next() {
        if (m_position == m_steps.size())
            return std::nullopt;
        const auto &step = m_steps[m_position++];
        if (step.pause.count() > 0)
            m_pause(step.pause);
        return Json::encode(step.event) + '\n';
    }

private:
    QList<AnswerStream::Step> m_steps;
    Pause m_pause;
    RunLimit::Place m_place;
    qsizetype m_position = 0;
};

} // namespace

void ChatRoutes::add(Router &router, const Answerer &answerer, Database &database,
                     const Clock &clock, const Pause &pause) {
    const AccountStore accounts(database);
    const auto limit = RunLimit::make(greatestRuns);
    router.add(
        "POST", QStringLiteral("/v1/chat/runs"),
        [accounts, limit, clock, pause, &answerer, &database](Call &call) {
            const auto session = accounts.requireSession(call);
            const auto request = call.body<ChatRequest>(ChatRequest::greatestBody);
            request.check();
            const auto inquiry = answerer.inquiry(request);
            auto place = limit->admit();
            if (!place)
                throw failure(answerer, inquiry, 503, "busy", "answer.busy");
            const auto answer = answerer.answer(inquiry);
            // Last, so that a question which gets no answer is not counted.
            if (!QuestionQuota::recordQuestion(database, session.number, clock()))
                throw failure(answerer, inquiry, 429, "quota_reached", "answer.quotaReached");
            const auto run = std::make_shared<Run>(
                AnswerStream::steps(answerer.words(), inquiry, answer), pause, std::move(place));
            Reply::stream(call.response(), "application/x-ndjson", [run] { return run->next(); });
        });
}
