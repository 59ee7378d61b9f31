#pragma once

#include "platform/Transport.h"

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QUrl>

#include <chrono>

class RandomSource;

/// The secrets of one attempt to sign in with Google, and what is sent and accepted with them. Made
/// for one attempt and kept nowhere.
///
/// The attempt runs against the account origin, whatever server is set: its start page gives a code
/// that is worth a login together with the verifier, which never leaves this machine before.
class GoogleAuthorization final {
public:
    static constexpr QLatin1String callbackScheme{"quillmere-mac"};
    /// How long after its beginning an attempt accepts a callback.
    static constexpr std::chrono::seconds life{900};

    /// Scheme and host of the account pages, without a slash at the end.
    static QString accountOrigin();

    /// Unpadded base64 with the alphabet for addresses.
    static QByteArray base64URL(const QByteArray &bytes);

    /// Whether the text has the form of a code that the account service gives out once.
    static bool isCode(QStringView text);

    /// Throws URLError (cannotCreateFile) when the system has no random bytes.
    GoogleAuthorization(RandomSource &random, const QDateTime &now);

    /// The proof key, ASCII.
    const QByteArray &verifier() const { return m_verifier; }
    /// Ties a callback to this attempt, ASCII.
    const QByteArray &state() const { return m_state; }
    const QDateTime &startedAt() const { return m_startedAt; }

    /// What the start page learns of the verifier: its hash.
    QByteArray challenge() const;

    /// The page that the browser opens. `language` is the raw value of an effective language.
    QUrl startURL(const QString &language) const;

    /// The code in the address that came back, which may come from anybody. Throws URLError:
    /// timedOut when it came too late, or the clock went back; badURL when it is not the address
    /// agreed upon, as it is written; badServerResponse when it does not belong to this attempt or
    /// has no code. Throws CancellationError when the user declined.
    QString code(const QString &callback, const QDateTime &now) const;

    /// Trades the code for a login.
    HttpRequest tokenRequest(const QString &code) const;

private:
    QByteArray m_verifier;
    QByteArray m_state;
    QDateTime m_startedAt;
};
