#pragma once

#include "service/MacRelease.h"
#include "store/AppStore.h"

#include <QUrl>
#include <QtQmlIntegration>

#include <optional>
#include <stop_token>

/// Asks the public site, whatever server is set, for a newer release. Finds it only: the user
/// fetches it with the browser.
class UpdateCheck : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(AppStore *store READ store WRITE setStore REQUIRED FINAL)
    Q_PROPERTY(bool checking READ isChecking NOTIFY changed FINAL)
    Q_PROPERTY(QString message READ message NOTIFY changed FINAL)
    Q_PROPERTY(bool found READ hasFound NOTIFY changed FINAL)
    Q_PROPERTY(QUrl download READ download NOTIFY changed FINAL)

public:
    explicit UpdateCheck(QObject *parent = nullptr) : QObject(parent) {}
    ~UpdateCheck() override;

    AppStore *store() const { return m_store; }
    /// To be set once.
    void setStore(AppStore *store);

    bool isChecking() const { return m_outcome == Outcome::checking; }
    /// The outcome of the last check, in the language of the interface; empty before it.
    QString message() const;
    bool hasFound() const { return m_found.has_value(); }
    /// The release that was found; empty without one.
    QUrl download() const;

    Q_INVOKABLE void begin();

Q_SIGNALS:
    void changed();

private:
    enum class Outcome { none, checking, unknown, upToDate, available };

    [[nodiscard]] Task<void> check(std::stop_token stop);
    void setOutcome(Outcome outcome, const std::optional<MacRelease> &found = {});

    AppStore *m_store = nullptr;
    Outcome m_outcome = Outcome::none;
    std::optional<MacRelease> m_found;
    std::stop_source m_stop;
};
