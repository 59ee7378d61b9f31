#include "screens/CaseFilter.h"

CaseFilter::CaseFilter(const QString &value) : m_value(value) {}

void CaseFilter::setChoices(const QList<FilterChoice> &choices) {
    m_choices.setItems(choices);
    Q_EMIT choicesChanged();
    Q_EMIT indexChanged();
}

void CaseFilter::setValue(const QString &value) {
    if (m_value == value)
        return;
    m_value = value;
    Q_EMIT indexChanged();
    Q_EMIT valueChanged();
}

int CaseFilter::index() const {
    const auto &choices = m_choices.items();
    for (int row = 0; row < choices.size(); ++row) {
        if (choices[row].value == m_value)
            return row;
    }
    return -1;
}

void CaseFilter::setIndex(int index) {
    if (index >= 0 && index < m_choices.items().size())
        setValue(m_choices.items()[index].value);
}
