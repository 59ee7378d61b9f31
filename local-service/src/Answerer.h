#pragma once

#include "Answer.h"
#include "CaseIndex.h"
#include "ChatRequest.h"
#include "KnownQuestions.h"
#include "TextTables.h"

/// Answers questions from the collection. Every operation may be called on any thread.
class Answerer final {
public:
    explicit Answerer(const QList<CaseData::File> &files);

    Inquiry inquiry(const ChatRequest &request) const { return request.inquiry(m_known); }
    Answer answer(const Inquiry &inquiry) const;

    const TextTables &words() const { return m_words; }
    const CaseIndex &cases() const { return m_index; }

private:
    TextTables m_words = TextTables::builtIn();
    KnownQuestions m_known{m_words};
    CaseIndex m_index;
};
