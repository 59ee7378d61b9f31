#pragma once

#include "screens/RecordFilter.h"
#include "screens/WallRowModel.h"
#include "store/AppStore.h"

#include <QQmlParserStatus>
#include <QtQmlIntegration>

/// What of the account's wall holds the text of the filter: chats first, then cases. The wall is
/// fetched when the screen appears.
class WallModel : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(AppStore *store MEMBER m_store REQUIRED FINAL)
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY queryChanged FINAL)
    Q_PROPERTY(int columns READ columns WRITE setColumns NOTIFY columnsChanged FINAL)
    Q_PROPERTY(QAbstractListModel *rows READ rows CONSTANT FINAL)
    Q_PROPERTY(bool empty READ isEmpty NOTIFY emptyChanged FINAL)
    Q_PROPERTY(bool savedEarlier READ hasSavedEarlier NOTIFY savedEarlierChanged FINAL)

public:
    explicit WallModel(QObject *parent = nullptr);

    QString query() const { return m_query; }
    /// Not trimmed: a blank is looked for like any other character.
    void setQuery(const QString &query);
    /// How many cases stand side by side, at least one.
    int columns() const { return m_columns; }
    void setColumns(int columns);
    QAbstractListModel *rows() { return &m_rows; }
    bool isEmpty() const { return m_rows.items().isEmpty(); }
    /// The library holds cases that were kept before there was a wall.
    bool hasSavedEarlier() const { return m_savedEarlier; }

    /// The cases on display.
    const QList<WallItem> &cases() const { return m_cases; }
    /// An item is not removed twice at a time, nor before the service has it.
    bool isRemovable(const WallItem &item) const;

    // An id that the wall has no more is passed over, and so is a chat that cannot be read.
    Q_INVOKABLE void resume(const QString &id);
    Q_INVOKABLE void beginRemove(const QString &id);

    void classBegin() override {}
    void componentComplete() override;

Q_SIGNALS:
    void queryChanged();
    void columnsChanged();
    void emptyChanged();
    void savedEarlierChanged();
    /// Other cases are shown, or they stand or can be used otherwise.
    void casesChanged();

private:
    void follow();
    void update();
    void updateSavedEarlier();
    const WallItem *find(const QString &id) const;

    AppStore *m_store = nullptr;
    QString m_query;
    int m_columns = 1;
    RecordFilter<WallItem> m_filter;
    WallRowModel m_rows;
    QList<WallItem> m_cases;
    bool m_savedEarlier = false;
};
