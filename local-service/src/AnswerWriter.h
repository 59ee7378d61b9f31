#pragma once

#include "Answer.h"
#include "ChatRequest.h"

#include "records/Conversation.h"

#include <memory>
#include <optional>

/// An answer while it is written. What is destroyed before its end is not written any further.
class AnswerInProgress {
public:
    AnswerInProgress() = default;
    virtual ~AnswerInProgress() = default;
    AnswerInProgress(const AnswerInProgress &) = delete;
    AnswerInProgress &operator=(const AnswerInProgress &) = delete;

    /// The next event of the stream; the last one is "done" or "error". Takes its time, but soon
    /// gives nothing where there is none yet, so that its caller can see whether anyone listens.
    virtual std::optional<ChatEvent> next() = 0;
};

/// What writes the answers. Every operation may be called on any thread.
class AnswerWriter {
public:
    AnswerWriter() = default;
    virtual ~AnswerWriter() = default;
    AnswerWriter(const AnswerWriter &) = delete;
    AnswerWriter &operator=(const AnswerWriter &) = delete;

    /// `inquiry` is what the request asks, and `found` what the cases themselves say to it.
    virtual std::unique_ptr<AnswerInProgress>
    write(const ChatRequest &request, const Inquiry &inquiry, const Answer &found) const = 0;
};
