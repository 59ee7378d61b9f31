#pragma once

#include "Inquiry.h"
#include "QuestionMatch.h"

/// Which sentences of a case an answer wants.
namespace SentenceChoice {

/// Positions in the case's list of sentences, the most wanted first. An answer takes as many as it
/// has room for.
QList<qsizetype> wanted(const IndexedCase &item, const Inquiry &inquiry,
                        const QuestionMatch &match);

} // namespace SentenceChoice
