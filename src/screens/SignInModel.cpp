#include "screens/SignInModel.h"

#include "platform/CancellationError.h"
#include "platform/Start.h"

void SignInModel::setStore(AppStore *store) {
    m_store = store;
    connect(store, &AppStore::languageChanged, this, &SignInModel::errorChanged);
}

QString SignInModel::error() const {
    return m_failure ? m_store->describe(m_failure) : QString();
}

void SignInModel::begin(const QString &handle, const QString &password) {
    setFailure({});
    start(*m_store, [model = QPointer(this), store = m_store, handle, password] {
        return run(model, store, handle, password);
    });
}

/// The login goes on when the form has gone, which is what a successful one does to it.
Task<void> SignInModel::run(QPointer<SignInModel> model, AppStore *store, QString handle,
                            QString password) {
    std::exception_ptr failure;
    try {
        auto signingIn = store->login(handle, password);
        co_await signingIn;
        if (model)
            Q_EMIT model->succeeded();
    } catch (const CancellationError &) {
        // Whoever changed the identity meanwhile knows.
    } catch (...) {
        failure = std::current_exception();
    }
    if (model && failure)
        model->setFailure(failure);
}

void SignInModel::setFailure(std::exception_ptr failure) {
    m_failure = std::move(failure);
    Q_EMIT errorChanged();
}
