#pragma once

#include "platform/ByteStream.h"
#include "platform/Completion.h"
#include "platform/URLError.h"

#include <QList>

#include <memory>
#include <optional>
#include <stop_token>

/// The body of a streamed reply, as the test sends it piece by piece. The pieces are read as they
/// were sent.
class FakeBody final : public std::enable_shared_from_this<FakeBody> {
public:
    explicit FakeBody(int status) : m_status(status) {}

    void send(const QByteArray &piece);
    void end();
    void breakOff(URLError::Code code);

    /// Whether the other side still holds the connection.
    bool isOpen() const { return m_open; }

    /// The reading end; there is one.
    std::unique_ptr<ByteStream> reader(std::stop_token stop);

private:
    class Reader;

    void wake();

    int m_status;
    QList<QByteArray> m_pieces;
    bool m_ended = false;
    bool m_open = true;
    std::optional<URLError::Code> m_failure;
    std::optional<Completion<bool>> m_waiting;
};
