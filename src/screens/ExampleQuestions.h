#pragma once

#include "store/AppStore.h"

#include <QObject>
#include <QtQmlIntegration>

/// Three questions to start from, of the nine that each archive has.
class ExampleQuestions : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(AppStore *store READ store WRITE setStore REQUIRED FINAL)
    Q_PROPERTY(QStringList questions READ questions NOTIFY questionsChanged FINAL)

public:
    using QObject::QObject;

    /// The archive that examples come from: the one that is selected alone, else the flagship.
    static QString archiveOf(const AppStore &store);

    AppStore *store() const { return m_store; }
    void setStore(AppStore *store);

    QStringList questions() const;

    /// Goes on to the next three; the third time brings the first ones back.
    Q_INVOKABLE void shuffle();

Q_SIGNALS:
    void questionsChanged();

private:
    AppStore *m_store = nullptr;
    int m_batch = 0;
};
