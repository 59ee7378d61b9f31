#include "screens/ProfileEditorModel.h"

#include "platform/Start.h"

void ProfileEditorModel::setStore(AppStore *store) {
    m_store = store;
    connect(store, &AppStore::languageChanged, this, &ProfileEditorModel::changed);
}

QString ProfileEditorModel::error() const {
    return m_failure ? m_store->describe(m_failure) : QString();
}

QString ProfileEditorModel::titleKey() const {
    if (m_action == QLatin1String("rename"))
        return QStringLiteral("changeName");
    if (m_action == QLatin1String("email"))
        return QStringLiteral("changeEmail");
    if (m_action == QLatin1String("password"))
        return QStringLiteral("changePassword");
    if (m_action == QLatin1String("delete"))
        return QStringLiteral("deleteAccount");
    return QStringLiteral("acctProfile");
}

QJsonObject ProfileEditorModel::body(const QString &value, const QString &old) const {
    QJsonObject body{{QStringLiteral("action"), m_action}};
    if (m_action == QLatin1String("rename"))
        body.insert(QStringLiteral("handle"), value);
    else if (m_action == QLatin1String("email"))
        body.insert(QStringLiteral("email"), value);
    else if (m_action == QLatin1String("password"))
        body.insert(QStringLiteral("new"), value);
    else
        body.insert(QStringLiteral("password"), value);
    if (m_action == QLatin1String("password"))
        body.insert(QStringLiteral("old"), old);
    return body;
}

void ProfileEditorModel::submit(const QString &value, const QString &old) {
    if (m_busy)
        return;
    setState(true, {});
    start(*m_store, [model = QPointer(this), store = m_store, json = body(value, old)] {
        return run(model, store, json);
    });
}

/// The change goes on when the sheet has gone.
Task<void> ProfileEditorModel::run(QPointer<ProfileEditorModel> model, AppStore *store,
                                   QJsonObject body) {
    std::exception_ptr failure;
    try {
        auto updating = store->updateProfile(body);
        co_await updating;
    } catch (...) {
        failure = std::current_exception();
    }
    if (!model)
        co_return;
    model->setState(false, failure);
    if (!failure)
        Q_EMIT model->succeeded();
}

void ProfileEditorModel::setState(bool busy, std::exception_ptr failure) {
    m_busy = busy;
    m_failure = std::move(failure);
    Q_EMIT changed();
}
