#include "tests/support/FakeBody.h"

#include "platform/CancellationError.h"

#include <functional>

class FakeBody::Reader final : public ByteStream {
public:
    Reader(std::shared_ptr<FakeBody> body, std::stop_token stop)
        : m_body(std::move(body)), m_stop(std::move(stop)) {}
    ~Reader() override { m_body->m_open = false; }

    int status() const override { return m_body->m_status; }

    [[nodiscard]] Task<QByteArray> read() override {
        Completion<bool> news;
        m_body->m_waiting = news;
        if (m_body->m_ended || !m_body->m_pieces.isEmpty())
            m_body->wake();
        std::function<void()> onStop = [body = m_body] { body->wake(); };
        std::stop_callback stopping(m_stop, onStop);
        auto waiting = news.result();
        co_await waiting;
        if (m_stop.stop_requested())
            throw CancellationError();
        if (!m_body->m_pieces.isEmpty())
            co_return m_body->m_pieces.takeFirst();
        if (m_body->m_failure)
            throw URLError(*m_body->m_failure);
        co_return QByteArray();
    }

private:
    std::shared_ptr<FakeBody> m_body;
    std::stop_token m_stop;
};

void FakeBody::send(const QByteArray &piece) {
    m_pieces.append(piece);
    wake();
}

void FakeBody::end() {
    m_ended = true;
    wake();
}

void FakeBody::breakOff(URLError::Code code) {
    m_failure = code;
    end();
}

std::unique_ptr<ByteStream> FakeBody::reader(std::stop_token stop) {
    return std::make_unique<Reader>(shared_from_this(), std::move(stop));
}

void FakeBody::wake() {
    if (auto waiting = std::exchange(m_waiting, std::nullopt))
        waiting->succeed(true);
}
