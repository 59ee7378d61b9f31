#pragma once

#include "store/AppStore.h"

#include <QPointer>
#include <QtQmlIntegration>

/// One change of the profile, from its form to the service.
class ProfileEditorModel : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(AppStore *store READ store WRITE setStore REQUIRED FINAL)
    /// "rename", "email", "password" or "delete".
    Q_PROPERTY(QString action MEMBER m_action NOTIFY actionChanged REQUIRED FINAL)
    Q_PROPERTY(QString titleKey READ titleKey NOTIFY actionChanged FINAL)
    Q_PROPERTY(bool busy READ isBusy NOTIFY changed FINAL)
    Q_PROPERTY(QString error READ error NOTIFY changed FINAL)

public:
    explicit ProfileEditorModel(QObject *parent = nullptr) : QObject(parent) {}

    AppStore *store() const { return m_store; }
    /// To be set once.
    void setStore(AppStore *store);

    QString titleKey() const;
    bool isBusy() const { return m_busy; }
    /// Why the last attempt failed, in the language of the interface; empty without one.
    QString error() const;

    /// `old` is the present password where the new one is `value`.
    Q_INVOKABLE void submit(const QString &value, const QString &old);

    QJsonObject body(const QString &value, const QString &old) const;

Q_SIGNALS:
    void actionChanged();
    void changed();
    void succeeded();

private:
    [[nodiscard]] static Task<void> run(QPointer<ProfileEditorModel> model, AppStore *store,
                                        QJsonObject body);
    void setState(bool busy, std::exception_ptr failure);

    AppStore *m_store = nullptr;
    QString m_action;
    bool m_busy = false;
    std::exception_ptr m_failure;
};
