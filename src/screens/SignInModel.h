#pragma once

#include "store/AppStore.h"

#include <QPointer>
#include <QtQmlIntegration>

/// The sign-in form: what was wrong with the last login by password.
class SignInModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(AppStore *store READ store WRITE setStore REQUIRED FINAL)
    Q_PROPERTY(QString error READ error NOTIFY errorChanged FINAL)

public:
    explicit SignInModel(QObject *parent = nullptr) : QObject(parent) {}

    AppStore *store() const { return m_store; }
    /// To be set once.
    void setStore(AppStore *store);

    /// In the language of the interface; empty when nothing is wrong.
    QString error() const;

    Q_INVOKABLE void begin(const QString &handle, const QString &password);

Q_SIGNALS:
    void errorChanged();
    /// The login was taken up: the password is not needed any more.
    void succeeded();

private:
    [[nodiscard]] static Task<void> run(QPointer<SignInModel> model, AppStore *store,
                                        QString handle, QString password);
    void setFailure(std::exception_ptr failure);

    AppStore *m_store = nullptr;
    std::exception_ptr m_failure;
};
