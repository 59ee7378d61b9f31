#pragma once

#include "records/Catalogue.h"

/// What is said to an inquiry.
struct Answer {
    /// Paragraphs with a blank line between them; inline markdown only.
    QString text;
    /// The cases that it cites, in the order in which it does.
    QList<CaseCard> references;
};
