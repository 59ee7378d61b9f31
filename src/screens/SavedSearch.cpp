#include "screens/SavedSearch.h"

#include <QLocale>

namespace {

/// There and back, so that letters which only one of the cases tells apart become equal.
QString folded(const QString &text) {
    const QLocale locale;
    return locale.toLower(locale.toUpper(text.normalized(QString::NormalizationForm_C)));
}

} // namespace

QList<CaseCard> SavedSearch::matching(const QString &text) {
    if (text.isEmpty())
        return m_cards;
    if (m_folded.isEmpty()) {
        m_folded.reserve(m_cards.size());
        for (const auto &card : std::as_const(m_cards))
            m_folded.append(folded(card.title + QLatin1Char(' ') + card.summary));
    }
    const auto wanted = folded(text);
    QList<CaseCard> found;
    for (qsizetype index = 0; index < m_cards.size(); ++index) {
        if (m_folded[index].contains(wanted))
            found.append(m_cards[index]);
    }
    return found;
}
