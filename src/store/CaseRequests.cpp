// Asking the editors of an archive for more cases.
#include "platform/Start.h"
#include "platform/URLError.h"
#include "records/ArchiveStyle.h"
#include "service/CaseRequestReply.h"
#include "service/Endpoints.h"
#include "store/AppStore.h"

#include <algorithm>

namespace {

std::optional<QString> firstQuestion(const Conversation &chat) {
    const auto asked =
        std::find_if(chat.messages.begin(), chat.messages.end(),
                     [](const ChatMessage &message) { return message.role == ChatMessage::user; });
    return asked == chat.messages.end() ? std::nullopt : std::optional(asked->content);
}

} // namespace

Task<void> AppStore::requestMoreCases(QString archive) {
    const QString request = m_chat.id.text + QLatin1Char('|') + archive;
    const auto question = firstQuestion(m_chat);
    if (!m_account || !ArchiveStyle::ids().contains(archive) ||
        m_requestedCases.contains(request) || m_requestingCases.contains(request) || !question)
        co_return;

    const QString key = libraryKey();
    m_requestingCases.insert(request);
    Q_EMIT requestingCasesChanged();
    try {
        const QJsonObject body{{QStringLiteral("archive"), archive},
                               {QStringLiteral("question"), *question}};
        const API service = api();
        auto posting =
            service.post<CaseRequestReply>(Endpoint::requestCases, body, std::stop_token());
        const CaseRequestReply reply = co_await posting;
        if (!reply.queued && !reply.duplicate.value_or(false))
            throw URLError(URLError::Code::badServerResponse);
        if (key == libraryKey()) {
            m_requestedCases.insert(request);
            Q_EMIT requestedCasesChanged();
            setNotice(text(QStringLiteral("askRequested")));
        }
    } catch (...) {
        if (key == libraryKey())
            setNotice(describe(std::current_exception()));
    }
    if (key == libraryKey()) {
        m_requestingCases.remove(request);
        Q_EMIT requestingCasesChanged();
    }
}

void AppStore::beginRequestMoreCases(const QString &archive) {
    start(*this, [this, archive] { return requestMoreCases(archive); });
}
