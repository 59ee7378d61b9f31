#pragma once

#include "store/AppStore.h"

#include <QPointer>
#include <QtQmlIntegration>

/// The sign-in form: what was wrong with the last login by password.
class SignInModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(AppStore *store MEMBER m_store REQUIRED FINAL)
    Q_PROPERTY(QString error READ error NOTIFY errorChanged FINAL)

public:
    explicit SignInModel(QObject *parent = nullptr) : QObject(parent) {}

    QString error() const { return m_error; }

    Q_INVOKABLE void begin(const QString &handle, const QString &password);

Q_SIGNALS:
    void errorChanged();
    /// The login was taken up: the password is not needed any more.
    void succeeded();

private:
    [[nodiscard]] static Task<void> run(QPointer<SignInModel> model, AppStore *store,
                                        QString handle, QString password);
    void setError(const QString &error);

    AppStore *m_store = nullptr;
    QString m_error;
};
