#pragma once

#include "screens/ArchivePillModel.h"
#include "screens/CaseRequestModel.h"

#include <QtQmlIntegration>

/// The archives as the chat screen offers them: to limit a new conversation to, and to ask for more
/// cases.
class ChatArchives : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(AppStore *store READ store WRITE setStore REQUIRED FINAL)
    Q_PROPERTY(QAbstractListModel *pills READ pills CONSTANT FINAL)
    Q_PROPERTY(QAbstractListModel *requests READ requests CONSTANT FINAL)

public:
    using QObject::QObject;

    AppStore *store() const { return m_store; }
    void setStore(AppStore *store) {
        m_store = store;
        m_pills.setStore(store);
        m_requests.setStore(store);
    }

    QAbstractListModel *pills() { return &m_pills; }
    QAbstractListModel *requests() { return &m_requests; }

    Q_INVOKABLE void toggle(const QString &archive) { m_pills.toggle(archive); }

private:
    AppStore *m_store = nullptr;
    ArchivePillModel m_pills;
    CaseRequestModel m_requests;
};
