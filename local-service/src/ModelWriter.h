#pragma once

#include "AnswerWriter.h"
#include "ModelSettings.h"

class Answerer;

/// Has a language model write the answer, from the cases that were found and with their cards.
/// Where none was found there is nothing to ask it about.
class ModelWriter final : public AnswerWriter {
public:
    /// `answerer` has the words and the cases; `nothingFound` writes where there are none. Both
    /// must outlive the writer.
    ModelWriter(ModelSettings settings, const Answerer &answerer, const AnswerWriter &nothingFound);

    std::unique_ptr<AnswerInProgress> write(const ChatRequest &request, const Inquiry &inquiry,
                                            const Answer &found) const override;

private:
    ModelSettings m_settings;
    const Answerer &m_answerer;
    const AnswerWriter &m_nothingFound;
};
