#include "ModelPrompt.h"

#include "AnswerComposer.h"

#include <algorithm>

namespace {

/// The answer is shown as inline markdown, beside cards in the order of the numbers.
constexpr auto rules =
    "You answer questions about a collection of documented cases. The cases that were found for "
    "the question stand below, each with its number. Take what you say from these cases only. "
    "Where they do not answer the question, say so, and add nothing from elsewhere. Write in the "
    "language of the question; where that is not clear, in the language with the code \"%1\". "
    "Where you first speak of a case, write its title in bold with its era behind it, as in "
    "**Title** (1938). After each statement write the number of its case in square brackets, as "
    "in [2]. Write at most %2 words, in plain paragraphs with a blank line between them, without "
    "headings, lists or tables.";

QString line(const QString &label, const QString &text) {
    return QStringLiteral("%1: %2").arg(label, text);
}

QString description(qsizetype number, const CaseData::WrittenCase &written) {
    QStringList lines = {QStringLiteral("[%1] %2 (%3)").arg(number).arg(written.title, written.era),
                         line(QStringLiteral("Organization"), written.org), written.summary};
    for (const auto &section : written.sections)
        lines.append(line(section.title, section.body));
    if (written.tradeOut)
        lines.append(line(QStringLiteral("What was traded"), *written.tradeOut));
    return lines.join(QLatin1Char('\n'));
}

QString instructions(const Inquiry &inquiry, const QList<CaseData::WrittenCase> &evidence) {
    QStringList paragraphs = {QString::fromLatin1(rules)
                                  .arg(AppLanguages::rawValue(inquiry.language))
                                  .arg(AnswerComposer::greatestWords)};
    for (const auto &written : evidence)
        paragraphs.append(description(paragraphs.size(), written));
    return paragraphs.join(QStringLiteral("\n\n"));
}

} // namespace

QList<ChatRequest::Message> ModelPrompt::messages(const ChatRequest &request,
                                                  const Inquiry &inquiry,
                                                  const QList<CaseData::WrittenCase> &evidence) {
    QList<ChatRequest::Message> messages = {
        {QStringLiteral("system"), instructions(inquiry, evidence)}};
    const auto &turns = request.messages;
    for (const auto &turn : turns.last(std::min(turns.size(), rememberedTurns))) {
        // A run that failed leaves an answer without words.
        if (!turn.content.isEmpty())
            messages.append({turn.role, turn.content.left(longestTurn)});
    }
    messages.append({QStringLiteral("user"), request.question.trimmed()});
    return messages;
}
