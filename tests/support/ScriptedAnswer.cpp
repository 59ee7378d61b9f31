#include "tests/support/ScriptedAnswer.h"

ScriptedAnswer ScriptedAnswer::withHead(int status, const QByteArray &headers,
                                        const QByteArray &body) {
    ScriptedAnswer answer;
    answer.m_head = "HTTP/1.1 " + QByteArray::number(status) + " Scripted\r\n" + headers + "\r\n";
    answer.m_body = body;
    return answer;
}

ScriptedAnswer ScriptedAnswer::reply(int status, const QByteArray &body) {
    return withHead(status,
                    "Content-Type: application/json\r\nContent-Length: " +
                        QByteArray::number(body.size()) + "\r\n",
                    body);
}

ScriptedAnswer ScriptedAnswer::redirect(int status, const QByteArray &location) {
    return reply(status, "{}").with("Location", location);
}

ScriptedAnswer ScriptedAnswer::chunked(int status, const QList<QByteArray> &chunks) {
    QByteArray body;
    for (const auto &chunk : chunks)
        body += QByteArray::number(chunk.size(), 16) + "\r\n" + chunk + "\r\n";
    body += "0\r\n\r\n";
    return withHead(status, "Content-Type: application/json\r\nTransfer-Encoding: chunked\r\n",
                    body);
}

ScriptedAnswer ScriptedAnswer::raw(const QByteArray &bytes) {
    ScriptedAnswer answer = hangUp();
    answer.m_body = bytes;
    return answer;
}

ScriptedAnswer ScriptedAnswer::silence() {
    return {};
}

ScriptedAnswer ScriptedAnswer::hangUp() {
    return ScriptedAnswer().thenClosed();
}

ScriptedAnswer ScriptedAnswer::with(const QByteArray &header, const QByteArray &value) const {
    ScriptedAnswer answer = *this;
    answer.m_head.chop(2);
    answer.m_head += header + ": " + value + "\r\n\r\n";
    return answer;
}

ScriptedAnswer ScriptedAnswer::stalledInHead() const {
    ScriptedAnswer answer = *this;
    answer.m_head.truncate(m_head.size() / 2);
    answer.m_body.clear();
    return answer;
}

ScriptedAnswer ScriptedAnswer::stalledInBody() const {
    ScriptedAnswer answer = *this;
    answer.m_body.truncate(m_body.size() / 2);
    return answer;
}

ScriptedAnswer ScriptedAnswer::cutInHead() const {
    return stalledInHead().thenClosed();
}

ScriptedAnswer ScriptedAnswer::cutInBody() const {
    return stalledInBody().thenClosed();
}

ScriptedAnswer ScriptedAnswer::held() const {
    ScriptedAnswer answer = *this;
    answer.m_held = true;
    return answer;
}

ScriptedAnswer ScriptedAnswer::thenClosed() const {
    ScriptedAnswer answer = *this;
    answer.m_closes = true;
    return answer;
}

ScriptedAnswer ScriptedAnswer::dripped(int pieces, std::chrono::milliseconds interval) const {
    ScriptedAnswer answer = *this;
    answer.m_pieces = pieces;
    answer.m_interval = interval;
    return answer;
}
