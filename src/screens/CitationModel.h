#pragma once

#include "records/Catalogue.h"
#include "store/ListModel.h"

#include <QPointer>
#include <QtQmlIntegration>

/// The cases that one message of a conversation cites.
class CitationModel : public ListModel<CaseCard> {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(
        QAbstractListModel *messages READ messages WRITE setMessages NOTIFY placeChanged FINAL)
    Q_PROPERTY(int row READ row WRITE setRow NOTIFY placeChanged FINAL)
    Q_PROPERTY(int count READ count NOTIFY countChanged FINAL)

public:
    enum Role { archive = Qt::UserRole, title, summary, reason, weak };

    using ListModel::ListModel;

    /// The messages and the row among them; -1 for none yet.
    QAbstractListModel *messages() const { return m_messages; }
    void setMessages(QAbstractListModel *messages);
    int row() const { return m_row; }
    void setRow(int row);

    int count() const { return rowCount(); }

    QHash<int, QByteArray> roleNames() const override;

Q_SIGNALS:
    void placeChanged();
    void countChanged();

protected:
    QString identity(const CaseCard &card) const override { return card.key; }
    QVariant value(const CaseCard &card, int role) const override;

private:
    void followChange(const QModelIndex &first, const QModelIndex &last, const QList<int> &roles);
    void update();

    QPointer<QAbstractListModel> m_messages;
    int m_row = -1;
};
