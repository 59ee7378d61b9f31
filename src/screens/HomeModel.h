#pragma once

#include "platform/LatestTask.h"
#include "screens/CaseCardModel.h"
#include "store/AppStore.h"

#include <QQmlParserStatus>
#include <QtQmlIntegration>

/// The newest cases of the flagship archive, fetched when the screen appears and again whenever the
/// language changes. Leaving the screen ends the request.
class HomeModel : public QObject, public QQmlParserStatus {
    Q_OBJECT
    Q_INTERFACES(QQmlParserStatus)
    QML_ELEMENT
    Q_PROPERTY(AppStore *store MEMBER m_store REQUIRED FINAL)
    Q_PROPERTY(QAbstractListModel *latest READ latest CONSTANT FINAL)
    Q_PROPERTY(bool empty READ isEmpty NOTIFY latestChanged FINAL)
    Q_PROPERTY(bool failed READ hasFailed NOTIFY failedChanged FINAL)

public:
    explicit HomeModel(QObject *parent = nullptr);

    QAbstractListModel *latest() { return &m_latest; }
    bool isEmpty() const { return m_latest.items().isEmpty(); }
    /// The last load failed.
    bool hasFailed() const { return m_failed; }

    Q_INVOKABLE void beginLoad();

    void classBegin() override {}
    void componentComplete() override;

Q_SIGNALS:
    void latestChanged();
    void failedChanged();

private:
    [[nodiscard]] Task<void> load(std::stop_token stop);
    void setFailed(bool failed);

    AppStore *m_store = nullptr;
    CaseCardModel m_latest;
    bool m_failed = false;
    LatestTask m_loading;
};
