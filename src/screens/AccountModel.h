#pragma once

#include "store/AppStore.h"

#include <QPointer>
#include <QQmlParserStatus>
#include <QUrl>
#include <QtQmlIntegration>

/// What the account screen says and links to, besides the store's own fields.
class AccountModel : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(AppStore *store MEMBER m_store REQUIRED FINAL)
    Q_PROPERTY(bool pro READ isPro NOTIFY accountChanged FINAL)
    Q_PROPERTY(bool resending READ isResending NOTIFY resendChanged FINAL)
    Q_PROPERTY(bool resent READ isResent NOTIFY resendChanged FINAL)
    Q_PROPERTY(bool synced READ isSynced NOTIFY syncedChanged FINAL)
    Q_PROPERTY(QUrl registration READ registration NOTIFY addressesChanged FINAL)
    Q_PROPERTY(QUrl accountPage READ accountPage NOTIFY addressesChanged FINAL)
    Q_PROPERTY(QUrl privacy READ privacy NOTIFY addressesChanged FINAL)
    Q_PROPERTY(QUrl terms READ terms NOTIFY addressesChanged FINAL)
    Q_PROPERTY(QString version READ version CONSTANT FINAL)
    Q_PROPERTY(QStringList languages READ languages NOTIFY languagesChanged FINAL)
    Q_PROPERTY(int language READ language WRITE setLanguage NOTIFY languageChanged FINAL)

public:
    explicit AccountModel(QObject *parent = nullptr) : QObject(parent) {}

    bool isPro() const;

    bool isResending() const { return m_resending; }
    bool isResent() const { return m_resent; }
    Q_INVOKABLE void beginResend();

    /// The key of the short word on the state of the synchronisation.
    bool isSynced() const;
    /// Synchronises, and fetches the wall after it.
    Q_INVOKABLE void beginSync();

    /// On the account site: the service's own, if it names a usable one.
    QUrl registration() const;
    QUrl accountPage() const;
    /// On the public site, in one of its languages.
    QUrl privacy() const { return legalPage(QStringLiteral("privacy")); }
    QUrl terms() const { return legalPage(QStringLiteral("terms")); }
    QString version() const;

    /// Every interface language by its own name, the system's choice first.
    QStringList languages() const;
    int language() const;
    void setLanguage(int place);

    void classBegin() override {}
    void componentComplete() override;

Q_SIGNALS:
    void accountChanged();
    void resendChanged();
    void syncedChanged();
    void addressesChanged();
    void languagesChanged();
    void languageChanged();

private:
    [[nodiscard]] static Task<void> resend(QPointer<AccountModel> model, AppStore *store);
    [[nodiscard]] static Task<void> sync(AppStore *store);
    QUrl accountSite(const QString &path) const;
    QUrl legalPage(const QString &name) const;
    void takeAccount();
    void setResend(bool resending, bool resent);

    AppStore *m_store = nullptr;
    QString m_email;
    bool m_resending = false;
    bool m_resent = false;
};
