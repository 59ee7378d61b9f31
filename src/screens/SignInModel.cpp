#include "screens/SignInModel.h"

#include "platform/CancellationError.h"
#include "platform/Start.h"

void SignInModel::begin(const QString &handle, const QString &password) {
    setError({});
    start(*m_store, [model = QPointer(this), store = m_store, handle, password] {
        return run(model, store, handle, password);
    });
}

/// The login goes on when the form has gone, which is what a successful one does to it.
Task<void> SignInModel::run(QPointer<SignInModel> model, AppStore *store, QString handle,
                            QString password) {
    QString failure;
    try {
        auto signingIn = store->login(handle, password);
        co_await signingIn;
        if (model)
            Q_EMIT model->succeeded();
    } catch (const CancellationError &) {
        // Whoever changed the identity meanwhile knows.
    } catch (...) {
        failure = store->describe(std::current_exception());
    }
    if (model && !failure.isEmpty())
        model->setError(failure);
}

void SignInModel::setError(const QString &error) {
    if (m_error == error)
        return;
    m_error = error;
    Q_EMIT errorChanged();
}
