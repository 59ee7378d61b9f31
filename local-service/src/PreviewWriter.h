#pragma once

#include "AnswerWriter.h"
#include "Pause.h"

class TextTables;

/// Gives what the cases say as it stands, at the pace of text that is being written.
class PreviewWriter final : public AnswerWriter {
public:
    /// `words` must outlive the writer. `pause` is called between the pieces of an answer.
    PreviewWriter(const TextTables &words, Pause pause);

    std::unique_ptr<AnswerInProgress> write(const ChatRequest &request, const Inquiry &inquiry,
                                            const Answer &found) const override;

private:
    const TextTables &m_words;
    Pause m_pause;
};
