#pragma once

#include "Answer.h"
#include "Inquiry.h"

#include "records/Conversation.h"

#include <QList>

#include <chrono>

class TextTables;

/// An answer as the lines in which it is sent.
namespace AnswerStream {

struct Step {
    /// How long nothing is sent before it.
    std::chrono::milliseconds pause{0};
    ChatEvent event;
};

/// An event that holds nothing yet. `type` is one of the stream's own.
ChatEvent event(const char *type);

/// What the program shows while it waits, and the cases, without a mode.
QList<Step> opening(const TextTables &words, const Inquiry &inquiry,
                    const QList<CaseCard> &references);

/// The opening with the mode of a preview, the text in small pieces and the end.
QList<Step> steps(const TextTables &words, const Inquiry &inquiry, const Answer &answer);

} // namespace AnswerStream
