#pragma once

#include "screens/CitationModel.h"

#include <QPointer>
#include <QtQmlIntegration>

/// The cases that one message of a conversation cites, followed as they change.
class Citations : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(
        QAbstractListModel *messages READ messages WRITE setMessages NOTIFY placeChanged FINAL)
    Q_PROPERTY(int row READ row WRITE setRow NOTIFY placeChanged FINAL)
    Q_PROPERTY(QAbstractListModel *cards READ cards CONSTANT FINAL)
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

public:
    using QObject::QObject;

    /// The conversation, and the row of the message in it; -1 for none yet.
    QAbstractListModel *messages() const { return m_messages; }
    void setMessages(QAbstractListModel *messages);
    int row() const { return m_row; }
    void setRow(int row);

    QAbstractListModel *cards() { return &m_cards; }
    int count() const { return m_cards.rowCount(); }

Q_SIGNALS:
    void placeChanged();
    void countChanged();

private:
    void followChange(const QModelIndex &first, const QModelIndex &last, const QList<int> &roles);
    void update();

    QPointer<QAbstractListModel> m_messages;
    int m_row = -1;
    CitationModel m_cards;
};
