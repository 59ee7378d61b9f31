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

/// What the program shows while it waits, the cases, the text in small pieces and the end.
QList<Step> steps(const TextTables &words, const Inquiry &inquiry, const Answer &answer);

} // namespace AnswerStream
