#pragma once

#include "screens/ConversationModel.h"
#include "screens/RecordFilter.h"
#include "store/AppStore.h"

#include <QQmlParserStatus>
#include <QtQmlIntegration>

/// The conversations of the library that hold the text of the filter, the last saved first.
class HistoryModel : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(AppStore *store MEMBER m_store REQUIRED FINAL)
    Q_PROPERTY(QString query READ query WRITE setQuery NOTIFY queryChanged FINAL)
    Q_PROPERTY(QAbstractListModel *conversations READ conversations CONSTANT FINAL)
    Q_PROPERTY(bool empty READ isEmpty NOTIFY emptyChanged FINAL)

public:
    explicit HistoryModel(QObject *parent = nullptr);

    QString query() const { return m_query; }
    /// Not trimmed: a blank is looked for like any other character.
    void setQuery(const QString &query);
    QAbstractListModel *conversations() { return &m_conversations; }
    bool isEmpty() const { return m_conversations.items().isEmpty(); }

    // An id that the library has no more is passed over.
    Q_INVOKABLE void open(const QString &id);
    Q_INVOKABLE void rename(const QString &id, const QString &title);
    Q_INVOKABLE void remove(const QString &id);

    void classBegin() override {}
    void componentComplete() override;

Q_SIGNALS:
    void queryChanged();
    void emptyChanged();

private:
    QList<Conversation> matches();
    void prepareFilter();
    const Conversation *find(const QString &id) const;
    void followLibrary();
    void followLanguage();
    void tellEmpty();

    AppStore *m_store = nullptr;
    QString m_query;
    ConversationModel m_conversations;
    RecordFilter<Conversation> m_filter;
    /// What was last told of `empty`.
    bool m_empty = true;
};
