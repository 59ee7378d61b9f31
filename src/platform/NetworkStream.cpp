#include "platform/NetworkStream.h"

#include "platform/CancellationError.h"
#include "platform/QtTransport.h"

#include <QNetworkReply>

namespace {

/// Of what has arrived, a reader takes no more than this (bytes) in one turn: many short lines are
/// work for the main thread.
constexpr qsizetype maximumPiece = 8192;

/// The body is used as it comes in, and no decompressor may hold it back.
HttpRequest uncompressed(HttpRequest request) {
    request.headers.emplace_back("Accept-Encoding", "identity");
    return request;
}

} // namespace

NetworkStream::NetworkStream(HttpRequest request, std::stop_token stop)
    : NetworkExchange(uncompressed(std::move(request))),
      m_stop(std::move(stop)),
      m_stopping(m_stop, cancelLater()) {
    m_turn.setSingleShot(true);
    connect(&m_turn, &QTimer::timeout, this, [this] {
        auto reader = *std::exchange(m_reader, std::nullopt);
        reader.succeed(true);
    });
}

NetworkStream::~NetworkStream() {
    cancel();
}

Task<void> NetworkStream::open() {
    sendAlone();
    auto waiting = m_head.result();
    co_await waiting;
    if (m_stop.stop_requested())
        throw CancellationError();
}

Task<QByteArray> NetworkStream::read() {
    m_reader.emplace();
    auto waiting = m_reader->result();
    if (m_finished || !m_bytes.isEmpty())
        wakeReader();
    co_await waiting;
    if (m_stop.stop_requested())
        throw CancellationError();
    if (m_bytes.isEmpty() && m_failure)
        std::rethrow_exception(m_failure);
    const auto piece = m_bytes.left(maximumPiece);
    m_bytes.remove(0, piece.size());
    co_return piece;
}

void NetworkStream::wakeReader() {
    if (m_reader)
        m_turn.start(0);
}

void NetworkStream::received() {
    m_status = NetworkExchange::status();
    if (m_status != 0)
        m_head.succeed(true);
    const auto bytes = reply().readAll();
    if (bytes.isEmpty())
        return;
    m_bytes += bytes;
    m_received += bytes.size();
    if (m_received > QtTransport::maximumBody)
        end(URLError::Code::dataLengthExceedsMaximum);
    wakeReader();
}

void NetworkStream::finished(std::exception_ptr failure) {
    if (reply().isOpen())
        received();
    m_finished = true;
    m_failure = failure;
    if (failure)
        m_head.fail(failure);
    wakeReader();
}
