#include "ChatRoutes.h"

#include "AccountStore.h"
#include "AnswerWriter.h"
#include "Answerer.h"
#include "QuestionQuota.h"
#include "Router.h"
#include "RunLimit.h"

#include "records/JsonDecoder.h"

#include <cstdio>

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

/// The reply is under way: what goes wrong here cannot become another one.
void forgetQuestion(Database &database, qint64 account, qint64 now) {
    try {
        QuestionQuota::forgetQuestion(database, account, now);
    } catch (const std::exception &error) {
        std::fprintf(stderr, "A question without an answer stays counted: %s\n", error.what());
    }
}

/// An answer on its way to one client.
class Run final {
public:
    /// `forget` is called when the run fails before the first words.
    Run(std::unique_ptr<AnswerInProgress> answer, RunLimit::Place place,
        std::function<void()> forget)
        : m_place(std::move(place)), m_answer(std::move(answer)), m_forget(std::move(forget)) {}

    /// Empty when there is nothing to send yet, absent when all has been sent.
    std::optional<QByteArray> next() {
        if (m_ended)
            return std::nullopt;
        const auto event = m_answer->next();
        if (!event)
            return QByteArray();
        const bool failed = event->type == QLatin1String("error");
        m_ended = failed || event->type == QLatin1String("done");
        m_hasText = m_hasText || event->type == QLatin1String("delta");
        if (failed && !m_hasText)
            m_forget();
        return Json::encode(*event) + '\n';
    }

private:
    /// The first member, since what the answer holds must be gone before another run may begin.
    RunLimit::Place m_place;
    std::unique_ptr<AnswerInProgress> m_answer;
    std::function<void()> m_forget;
    bool m_hasText = false;
    bool m_ended = false;
};

} // namespace

void ChatRoutes::add(Router &router, const Answerer &answerer, const AnswerWriter &writer,
                     Database &database, const Clock &clock) {
    const AccountStore accounts(database);
    const auto limit = RunLimit::make(greatestRuns);
    router.add(
        "POST", QStringLiteral("/v1/chat/runs"),
        [accounts, limit, clock, &answerer, &writer, &database](Call &call) {
            const auto session = accounts.requireSession(call);
            const auto request = call.body<ChatRequest>(ChatRequest::greatestBody);
            request.check();
            const auto inquiry = answerer.inquiry(request);
            auto place = limit->admit();
            if (!place)
                throw failure(answerer, inquiry, 503, "busy", "answer.busy");
            const auto found = answerer.answer(inquiry);
            // Last, so that a question which gets no answer is not counted.
            const auto now = clock();
            if (!QuestionQuota::recordQuestion(database, session.number, now))
                throw failure(answerer, inquiry, 429, "quota_reached", "answer.quotaReached");
            const auto run =
                std::make_shared<Run>(writer.write(request, inquiry, found), std::move(place),
                                      [&database, account = session.number, now] {
                                          forgetQuestion(database, account, now);
                                      });
            Reply::stream(call.response(), "application/x-ndjson", [run] { return run->next(); });
        });
}
