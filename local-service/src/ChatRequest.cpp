#include "ChatRequest.h"

#include "KnownQuestions.h"
#include "RequestError.h"

#include "records/ArchiveStyle.h"

#include <algorithm>

namespace {

/// How far back the talk still colors a question.
constexpr qsizetype rememberedQuestions = 2;
constexpr qsizetype greatestEvidence = 20;

const QString user = QStringLiteral("user");
const QString assistant = QStringLiteral("assistant");

AppLanguage languageOf(const QString &locale) {
    const auto found = std::find_if(
        AppLanguages::allCases.begin(), AppLanguages::allCases.end(), [&](AppLanguage language) {
            return language != AppLanguage::system && AppLanguages::rawValue(language) == locale;
        });
    return found == AppLanguages::allCases.end() ? AppLanguage::en : *found;
}

/// The asker's own words before this question, without those of the program's suggestions, which
/// say nothing about a subject.
QStringList earlierQuestions(const QList<ChatRequest::Message> &messages,
                             const KnownQuestions &known) {
    QStringList questions;
    for (auto message = messages.rbegin(); message != messages.rend(); ++message) {
        if (message->role != user || questions.size() == rememberedQuestions)
            continue;
        const auto recognized = known.recognize(message->content);
        if (recognized.kind == Inquiry::Kind::Question || recognized.kind == Inquiry::Kind::Explain)
            questions.append(recognized.question.left(ChatRequest::longestQuestion));
    }
    return questions;
}

} // namespace

void ChatRequest::check() const {
    const auto length = question.trimmed().size();
    if (length == 0 || length > longestQuestion)
        throw RequestError::badParameter(
            QStringLiteral("question"),
            QStringLiteral("a text of at most %1 characters").arg(longestQuestion));
    for (const QString &archive : archives) {
        if (!ArchiveStyle::ids().contains(archive))
            throw RequestError::badParameter(QStringLiteral("archives"),
                                             QStringLiteral("a list of the ids of archives"));
    }
    for (const Message &message : messages) {
        if (message.role != user && message.role != assistant)
            throw RequestError::badParameter(QStringLiteral("role"),
                                             QStringLiteral("user or assistant"));
    }
}

Inquiry ChatRequest::inquiry(const KnownQuestions &known) const {
    Inquiry inquiry;
    const auto recognized = known.recognize(question.trimmed());
    inquiry.kind = recognized.kind;
    inquiry.question = recognized.question;
    inquiry.earlier = earlierQuestions(messages, known);
    inquiry.archives = archives;
    for (const Case &named : cases.first(std::min(cases.size(), greatestEvidence)))
        inquiry.evidence.append({named.archive, named.id});
    // Cases that somebody points at come behind a turn that cites them and says nothing.
    inquiry.aboutEvidence = !cases.isEmpty() && !messages.isEmpty() &&
                            messages.last().role == assistant && messages.last().content.isEmpty();
    inquiry.language = languageOf(locale);
    return inquiry;
}
