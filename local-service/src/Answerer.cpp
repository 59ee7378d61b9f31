#include "Answerer.h"

#include "AnswerComposer.h"
#include "Retrieval.h"

Answerer::Answerer(const QList<CaseData::File> &files) : m_index(files) {}

Answer Answerer::answer(const Inquiry &inquiry) const {
    return AnswerComposer::compose(m_words, inquiry, Retrieval::find(m_index, inquiry));
}
