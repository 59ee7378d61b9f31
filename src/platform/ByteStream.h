#pragma once

#include "platform/Task.h"

#include <QByteArray>

/// The body of a reply whose head has arrived, read as it comes in. Destroying it closes the
/// connection, whatever is still to come. On the main thread.
class ByteStream {
public:
    ByteStream() = default;
    virtual ~ByteStream() = default;
    Q_DISABLE_COPY_MOVE(ByteStream)

    /// The HTTP status.
    virtual int status() const = 0;

    /// The next bytes, a few KB at most; empty once the body has ended. One read at a time, and the
    /// event loop turns between two of them.
    ///
    /// Throws URLError where the body breaks off, after all the bytes that came before; and
    /// CancellationError once the stop was requested that the request was made with, at once.
    [[nodiscard]] virtual Task<QByteArray> read() = 0;
};
