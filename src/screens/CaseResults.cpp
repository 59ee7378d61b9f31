#include "screens/CaseResults.h"

#include <algorithm>
#include <iterator>

void CaseResults::replace(const QList<CaseCard> &cards) {
    m_model.replaceItems(cards);
    m_rows.clear();
    noteRows(0);
}

void CaseResults::update(const QList<CaseCard> &cards) {
    m_model.setItems(cards);
    m_rows.clear();
    noteRows(0);
}

void CaseResults::append(const QList<CaseCard> &page) {
    const auto first = cards().size();
    QList<CaseCard> fresh;
    std::copy_if(page.begin(), page.end(), std::back_inserter(fresh),
                 [this](const CaseCard &card) { return !m_rows.contains(card.key); });
    m_model.append(fresh);
    noteRows(first);
}

void CaseResults::noteRows(qsizetype first) {
    for (auto row = first; row < cards().size(); ++row) {
        const auto &key = cards()[row].key;
        if (!m_rows.contains(key))
            m_rows.insert(key, static_cast<int>(row));
    }
}
