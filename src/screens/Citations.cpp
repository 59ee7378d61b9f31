#include "screens/Citations.h"

#include "store/MessageModel.h"

void Citations::setMessages(QAbstractListModel *messages) {
    if (m_messages == messages)
        return;
    if (m_messages)
        disconnect(m_messages, nullptr, this, nullptr);
    m_messages = messages;
    if (messages)
        connect(messages, &QAbstractListModel::dataChanged, this, &Citations::followChange);
    update();
    Q_EMIT placeChanged();
}

void Citations::setRow(int row) {
    if (m_row == row)
        return;
    m_row = row;
    update();
    Q_EMIT placeChanged();
}

void Citations::followChange(const QModelIndex &first, const QModelIndex &last,
                             const QList<int> &roles) {
    const bool concerned = first.row() <= m_row && m_row <= last.row();
    if (concerned && (roles.isEmpty() || roles.contains(MessageModel::references)))
        update();
}

void Citations::update() {
    QList<CaseCard> cards;
    if (m_messages && m_row >= 0)
        cards = m_messages->index(m_row, 0).data(MessageModel::references).value<QList<CaseCard>>();
    if (cards == m_cards.items())
        return;
    m_cards.setItems(cards);
    Q_EMIT countChanged();
}
