#pragma once

#include "Inquiry.h"
#include "QuestionMatch.h"

/// Which sentences of a case an answer wants.
namespace SentenceChoice {

/// Positions in a case's list of sentences, the most wanted first.
struct Wishes {
    /// What the answer cannot well do without.
    QList<qsizetype> core;
    /// What may follow, one after the other, for as long as there is room.
    QList<qsizetype> more;
};

Wishes wishes(const IndexedCase &item, const Inquiry &inquiry, const QuestionMatch &match);

} // namespace SentenceChoice
