#pragma once

#include "store/AppStore.h"

#include <QObject>
#include <QtQmlIntegration>

/// The question that is being written: its text, whether it can be sent, and the lines around it.
class PromptModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(AppStore *store READ store WRITE setStore REQUIRED FINAL)
    Q_PROPERTY(QString prompt READ prompt WRITE setPrompt NOTIFY promptChanged FINAL)
    Q_PROPERTY(bool sendable READ isSendable NOTIFY sendableChanged FINAL)
    Q_PROPERTY(QString placeholder READ placeholder NOTIFY placeholderChanged FINAL)
    Q_PROPERTY(QString quotaLine READ quotaLine NOTIFY quotaLineChanged FINAL)

public:
    using QObject::QObject;

    // The screen may look before it has handed the store over: then there is nothing.

    AppStore *store() const { return m_store; }
    void setStore(AppStore *store);

    const QString &prompt() const { return m_prompt; }
    void setPrompt(const QString &prompt);

    /// Only an account asks, one question at a time, and none without words.
    bool isSendable() const;

    /// Asks, and empties the prompt. What cannot be sent stays.
    Q_INVOKABLE void send();

    QString placeholder() const;

    /// How many questions are left; empty while that is not known.
    QString quotaLine() const;

Q_SIGNALS:
    void promptChanged();
    void sendableChanged();
    void placeholderChanged();
    void quotaLineChanged();

private:
    AppStore *m_store = nullptr;
    QString m_prompt;
};
