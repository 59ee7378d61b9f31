#include "screens/CitationModel.h"

#include "store/MessageModel.h"

void CitationModel::setMessages(QAbstractListModel *messages) {
    if (m_messages == messages)
        return;
    if (m_messages)
        disconnect(m_messages, nullptr, this, nullptr);
    m_messages = messages;
    if (messages)
        connect(messages, &QAbstractListModel::dataChanged, this, &CitationModel::followChange);
    update();
    Q_EMIT placeChanged();
}

void CitationModel::setRow(int row) {
    if (m_row == row)
        return;
    m_row = row;
    update();
    Q_EMIT placeChanged();
}

QHash<int, QByteArray> CitationModel::roleNames() const {
    return {{archive, "archive"},
            {title, "title"},
            {summary, "summary"},
            {reason, "reason"},
            {weak, "weak"}};
}

QVariant CitationModel::value(const CaseCard &card, int role) const {
    switch (role) {
    case archive:
        return card.archive;
    case title:
        return card.title;
    case summary:
        return card.summary;
    case reason:
        return card.note.value_or(card.summary);
    case weak:
        return card.strong == false;
    default:
        return {};
    }
}

void CitationModel::followChange(const QModelIndex &first, const QModelIndex &last,
                                 const QList<int> &roles) {
    const bool concerned = first.row() <= m_row && m_row <= last.row();
    if (concerned && (roles.isEmpty() || roles.contains(MessageModel::references)))
        update();
}

void CitationModel::update() {
    QList<CaseCard> cards;
    if (m_messages && m_row >= 0)
        cards = m_messages->index(m_row, 0).data(MessageModel::references).value<QList<CaseCard>>();
    setItems(cards);
    Q_EMIT countChanged();
}
