#pragma once

#include "Answer.h"
#include "Retrieval.h"

class TextTables;

/// Puts an answer together from the cases' own sentences. Nothing in it is written anew but the
/// frame: the opening, the closing and the notes, which are in the asker's language and claim
/// nothing about the matter itself.
namespace AnswerComposer {

/// An answer has at most so many words.
inline constexpr int greatestWords = 260;

/// `words` hold the sentences of the frame, and the texts that the program shows.
Answer compose(const TextTables &words, const Inquiry &inquiry, const Retrieval::Result &found);

} // namespace AnswerComposer
