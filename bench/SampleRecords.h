#pragma once

#include "records/Catalogue.h"
#include "records/Library.h"

/// Made-up records whose JSON text is about 10 MB, the same on each run.
namespace SampleRecords {

/// Some 20,000 cards of the usual size: many keys, short texts.
SearchPage shortCards();

/// Some 2,000 cards with summaries of several thousand characters, a part of them not Latin.
SearchPage longCards();

/// Saved cards, conversations with long answers and their citations, and a queue of changes.
LocalLibrary library();

/// What a user of some years keeps: 1,000 conversations of ten messages with citations, and 500
/// saved cards that the service knows.
LocalLibrary keptLibrary();

} // namespace SampleRecords
