#pragma once

#include "screens/CaseCardModel.h"

#include <QHash>

/// The cases that a search has brought so far, and where each of them stands.
class CaseResults final {
public:
    CaseCardModel &model() { return m_model; }
    const QList<CaseCard> &cards() const { return m_model.items(); }

    /// The cases of another search.
    void replace(const QList<CaseCard> &cards);

    /// The cases of the same search after a change: views keep their place.
    void update(const QList<CaseCard> &cards);

    /// Adds the cases of a page that are not there yet, in the page's order.
    void append(const QList<CaseCard> &page);

    /// The row of the first case with the key, or -1.
    int row(const QString &key) const { return m_rows.value(key, -1); }

private:
    void noteRows(qsizetype first);

    CaseCardModel m_model;
    QHash<QString, int> m_rows;
};
