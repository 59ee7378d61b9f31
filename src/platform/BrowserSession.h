#pragma once

#include "platform/Completion.h"

#include <QString>
#include <QUrl>

/// A visit to the web that ends with an address for this program; at most one at a time. All on the
/// main thread.
class BrowserSession {
public:
    virtual ~BrowserSession() = default;

    /// Shows the address, and completes `callback` with the first address of the scheme that comes
    /// back, as it was written. Where the visit fails, or the user is seen to give it up, it is
    /// completed with that error or with CancellationError. False, and nothing is completed, when
    /// the address cannot be shown.
    [[nodiscard]] virtual bool start(const QUrl &url, const QString &callbackScheme,
                                     const Completion<QString> &callback) = 0;

    /// Ends the visit, if there is one, without completing it.
    virtual void cancel() = 0;
};
