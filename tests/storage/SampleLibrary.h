#pragma once

#include "records/Library.h"

/// Made-up records with every optional field in use somewhere.
namespace SampleLibrary {

CaseCard card(int number);
Conversation conversation(int number, int messages = 2);

/// Under an account: with a queue and known versions.
LocalLibrary library(int cards = 3, int conversations = 3);

} // namespace SampleLibrary
