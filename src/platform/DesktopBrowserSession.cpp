#include "platform/DesktopBrowserSession.h"

#include "platform/Browser.h"

#include <utility>

bool DesktopBrowserSession::start(const QUrl &url, const QString &callbackScheme,
                                  const Completion<QString> &callback) {
    m_visit = Visit{callbackScheme + QLatin1Char(':'), callback};
    if (m_browser.open(url))
        return true;
    m_visit.reset();
    return false;
}

void DesktopBrowserSession::deliver(const QString &address) {
    if (!m_visit || !address.startsWith(m_visit->beginning))
        return;
    auto visit = std::exchange(m_visit, std::nullopt);
    visit->callback.succeed(address);
}
