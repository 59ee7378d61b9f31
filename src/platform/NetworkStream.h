#pragma once

#include "platform/ByteStream.h"
#include "platform/Completion.h"
#include "platform/NetworkExchange.h"

#include <functional>
#include <stop_token>

/// A reply that is read while it arrives.
class NetworkStream final : public NetworkExchange, public ByteStream {
public:
    NetworkStream(HttpRequest request, std::stop_token stop);
    ~NetworkStream() override;

    /// Sends the request and waits for the head of its reply.
    [[nodiscard]] Task<void> open();

    int status() const override { return m_status; }
    [[nodiscard]] Task<QByteArray> read() override;

private:
    void received() override;
    void finished(std::exception_ptr failure) override;

    void wakeReader();

    Completion<bool> m_head;
    int m_status = 0;
    QByteArray m_bytes;
    qint64 m_received = 0;
    bool m_finished = false;
    std::exception_ptr m_failure;
    std::optional<Completion<bool>> m_reader;
    /// Gives the reader its turn. A timer, because queued calls that make further ones would leave
    /// no turn to anything else.
    QTimer m_turn;
    std::stop_token m_stop;
    std::stop_callback<std::function<void()>> m_stopping;
};
