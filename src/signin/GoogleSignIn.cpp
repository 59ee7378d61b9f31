#include "signin/GoogleSignIn.h"

#include "platform/CancellationError.h"
#include "platform/Clock.h"
#include "platform/URLError.h"

#include <functional>

Task<QString> GoogleSignIn::authorize(GoogleAuthorization authorization, QString language,
                                      std::stop_token stop) {
    cancel();
    if (stop.stop_requested())
        throw CancellationError();
    const Completion<QString> callback;
    m_callback = callback;
    if (!m_session.start(authorization.startURL(language), GoogleAuthorization::callbackScheme,
                         callback))
        throw URLError(URLError::Code::cannotLoadFromNetwork);

    std::function<void()> onStop = [this, callback] {
        // As long as it is not complete, this is still the attempt under way.
        if (!callback.isComplete())
            cancel();
    };
    std::stop_callback stopping(stop, onStop);
    auto waiting = callback.result();
    const QString address = co_await waiting;
    if (stop.stop_requested())
        throw CancellationError();
    co_return authorization.code(address, m_clock.now());
}

void GoogleSignIn::cancel() {
    m_session.cancel();
    m_callback.fail(std::make_exception_ptr(CancellationError()));
}
