#pragma once

#include "store/AppStore.h"

#include <QUrl>
#include <QtQmlIntegration>

#include <stop_token>

/// Asks the public site, whatever server is set, for a newer release. Finds it only: the user
/// fetches it with the browser.
class UpdateCheck : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(AppStore *store MEMBER m_store REQUIRED FINAL)
    Q_PROPERTY(bool checking READ isChecking NOTIFY changed FINAL)
    Q_PROPERTY(QString message READ message NOTIFY changed FINAL)
    Q_PROPERTY(bool found READ hasFound NOTIFY changed FINAL)
    Q_PROPERTY(QUrl download READ download NOTIFY changed FINAL)

public:
    explicit UpdateCheck(QObject *parent = nullptr) : QObject(parent) {}
    ~UpdateCheck() override;

    bool isChecking() const { return m_checking; }
    /// The outcome of the last check; empty before it.
    QString message() const { return m_message; }
    bool hasFound() const { return !m_download.isEmpty(); }
    /// The release that was found; empty without one.
    QUrl download() const { return m_download; }

    Q_INVOKABLE void begin();

Q_SIGNALS:
    void changed();

private:
    [[nodiscard]] Task<void> check(std::stop_token stop);
    void setOutcome(bool checking, const QString &message, const QUrl &download);

    AppStore *m_store = nullptr;
    bool m_checking = false;
    QString m_message;
    QUrl m_download;
    std::stop_source m_stop;
};
