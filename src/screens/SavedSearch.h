#pragma once

#include "records/Catalogue.h"

/// Searches the saved cases on this machine, ignoring case by the rules of the user's locale.
class SavedSearch final {
public:
    SavedSearch() = default;
    explicit SavedSearch(const QList<CaseCard> &cards) : m_cards(cards) {}

    const QList<CaseCard> &cards() const { return m_cards; }

    /// The cases whose title and summary hold the text, in their order; all of them for none.
    QList<CaseCard> matching(const QString &text);

private:
    QList<CaseCard> m_cards;
    /// What is searched of each case, made for the first text: folding costs more than searching.
    QList<QString> m_folded;
};
