#pragma once

#include "Inquiry.h"
#include "QuestionMatch.h"

/// From an inquiry to the cases that answer it.
namespace Retrieval {

struct Finding {
    const IndexedCase *item;
    /// How well it fits the question, from 0 to about 1.
    double score = 0;
    bool strong = true;
};

struct Result {
    /// The best first, at most `greatestCount`.
    QList<Finding> findings;
    QuestionMatch match;
    /// Whether the answer is about the cases at hand rather than about whatever the archives hold.
    bool aboutEvidence = false;
};

inline constexpr qsizetype greatestCount = 3;

/// The index must outlive the result.
Result find(const CaseIndex &index, const Inquiry &inquiry);

} // namespace Retrieval
