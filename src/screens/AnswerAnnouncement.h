#pragma once

#include "store/AppStore.h"

#include <QObject>
#include <QtQmlIntegration>

/// Tells a screen reader once how a question ended, instead of every piece of the growing answer:
/// that the answer is there, or why there is none.
class AnswerAnnouncement : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(AppStore *store READ store WRITE setStore REQUIRED FINAL)
    Q_PROPERTY(QString words READ words NOTIFY wordsChanged FINAL)

public:
    using QObject::QObject;

    AppStore *store() const { return m_store; }
    void setStore(AppStore *store);

    /// Empty while there is nothing to tell.
    const QString &words() const { return m_words; }

    /// Ends the answer as it stands. Who does that needs not be told.
    Q_INVOKABLE void stop();

Q_SIGNALS:
    void wordsChanged();

private:
    void followRun();
    void tell(const QString &words);

    AppStore *m_store = nullptr;
    QString m_words;
    /// Of the run to tell of; absent when there is none.
    std::optional<Identifier> m_conversation;
};
