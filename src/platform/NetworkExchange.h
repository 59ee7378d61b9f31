#pragma once

#include "platform/Transport.h"
#include "platform/URLError.h"

#include <QNetworkReply>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include <exception>
#include <functional>
#include <memory>
#include <optional>

class QNetworkAccessManager;

/// A manager that keeps no cookies and follows no redirect.
std::unique_ptr<QNetworkAccessManager> makeNetworkManager();

/// One request on its way over Qt's network access, with its silence timer and its end. Replies are
/// handled here and nowhere else.
class NetworkExchange : public QObject {
public:
    explicit NetworkExchange(HttpRequest request);
    ~NetworkExchange() override;

    /// Ends the exchange with a CancellationError, inside this call if it is under way.
    void cancel();

    /// Cancels in a later turn of the event loop, unless the exchange is gone by then.
    std::function<void()> cancelLater();

    /// Throws where an address cannot be one of an HTTP service.
    static void check(const HttpRequest &request);

protected:
    /// More of the reply has arrived: its head, or bytes of its body.
    virtual void received() = 0;

    /// The reply is whole, whatever its status, or `failure` tells why it never will be.
    virtual void finished(std::exception_ptr failure) = 0;

    /// With a manager of its own, the request travels on a connection of its own.
    void send(QNetworkAccessManager &shared);
    void sendAlone();

    void end(URLError::Code code);

    HttpRequest &request() { return m_request; }
    QNetworkReply &reply() { return *m_reply; }
    /// 0 before the head has arrived.
    int status() const;

private:
    void watch(QNetworkReply *reply);
    void abort();
    void replyFinished();
    std::exception_ptr failure() const;

    std::unique_ptr<QNetworkAccessManager> m_own;
    HttpRequest m_request;
    QPointer<QNetworkReply> m_reply;
    QTimer m_silence;
    std::optional<URLError::Code> m_failure;
    bool m_cancelled = false;
    bool m_untrusted = false;
};
