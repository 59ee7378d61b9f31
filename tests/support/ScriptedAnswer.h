#pragma once

#include <QByteArray>
#include <QList>

#include <chrono>

/// What a scripted service does once it has read a request. Made by one of the static functions and
/// spoiled by the others.
class ScriptedAnswer final {
public:
    static ScriptedAnswer reply(int status, const QByteArray &body = {});
    static ScriptedAnswer redirect(int status, const QByteArray &location);
    static ScriptedAnswer chunked(int status, const QList<QByteArray> &chunks);
    /// Bytes as they stand, be they HTTP or not, and then a closed connection.
    static ScriptedAnswer raw(const QByteArray &bytes);
    /// Reads the request and never answers.
    static ScriptedAnswer silence();
    /// Reads the request and closes the connection.
    static ScriptedAnswer hangUp();

    ScriptedAnswer with(const QByteArray &header, const QByteArray &value) const;

    /// Only half of the head, or the head and half of the body; then a closed connection.
    ScriptedAnswer cutInHead() const;
    ScriptedAnswer cutInBody() const;
    /// The same, but the connection stays open and silent.
    ScriptedAnswer stalledInHead() const;
    ScriptedAnswer stalledInBody() const;

    /// Waits until the test releases it.
    ScriptedAnswer held() const;
    /// Whole, and then the connection is closed without a word about it in the head.
    ScriptedAnswer thenClosed() const;
    /// In so many pieces, one after each interval.
    ScriptedAnswer dripped(int pieces, std::chrono::milliseconds interval) const;

    QByteArray bytes() const { return m_head + m_body; }
    bool isHeld() const { return m_held; }
    bool closesConnection() const { return m_closes; }
    int pieces() const { return m_pieces; }
    std::chrono::milliseconds interval() const { return m_interval; }

private:
    static ScriptedAnswer withHead(int status, const QByteArray &headers, const QByteArray &body);

    QByteArray m_head;
    QByteArray m_body;
    bool m_held = false;
    bool m_closes = false;
    int m_pieces = 1;
    std::chrono::milliseconds m_interval{0};
};
