#pragma once

#include "platform/BrowserSession.h"
#include "platform/Task.h"
#include "signin/GoogleAuthorization.h"

#include <stop_token>

class Clock;

/// Takes the user through the browser for a code. One attempt at a time: a newer one ends the one
/// before. On the main thread.
class GoogleSignIn final {
public:
    GoogleSignIn(BrowserSession &session, const Clock &clock)
        : m_session(session), m_clock(clock) {}

    /// The code with which the browser came back. Throws CancellationError when the attempt was
    /// cancelled, replaced or declined, URLError (cannotLoadFromNetwork) when there is no browser,
    /// whatever ended the browser's visit, and what GoogleAuthorization::code throws.
    [[nodiscard]] Task<QString> authorize(GoogleAuthorization authorization, QString language,
                                          std::stop_token stop);

    /// Ends the attempt, if there is one.
    void cancel();

private:
    BrowserSession &m_session;
    const Clock &m_clock;
    /// Of the last attempt. Whoever completes it first, the browser or a cancellation, ends the
    /// attempt; what comes later finds it complete.
    Completion<QString> m_callback;
};
