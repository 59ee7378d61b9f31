#pragma once

#include "platform/BrowserSession.h"

#include <optional>

class Browser;

/// A visit in the user's own browser. Its way back is the desktop, which hands addresses of the
/// program's scheme over to the program; that the user closed the page is not told to anybody.
class DesktopBrowserSession final : public BrowserSession {
public:
    explicit DesktopBrowserSession(Browser &browser) : m_browser(browser) {}

    [[nodiscard]] bool start(const QUrl &url, const QString &callbackScheme,
                             const Completion<QString> &callback) override;
    void cancel() override { m_visit.reset(); }

    /// Takes an address that the desktop handed over. Ignored unless a visit waits for its scheme.
    void deliver(const QString &address);

private:
    struct Visit {
        QString beginning;
        Completion<QString> callback;
    };

    Browser &m_browser;
    std::optional<Visit> m_visit;
};
