#pragma once

#include "CaseData.h"
#include "ChatRequest.h"

/// What a model is asked.
namespace ModelPrompt {

/// How many turns of the talk go with a question, and how much of each, in characters.
inline constexpr qsizetype rememberedTurns = 8;
inline constexpr qsizetype longestTurn = 4000;

/// The rules and the numbered cases, the last turns of the talk, the question. `evidence` is in the
/// order in which the answer's cards stand.
QList<ChatRequest::Message> messages(const ChatRequest &request, const Inquiry &inquiry,
                                     const QList<CaseData::WrittenCase> &evidence);

} // namespace ModelPrompt
