#pragma once

#include "ModelSettings.h"

#include <QByteArray>
#include <QList>

#include <condition_variable>
#include <functional>
#include <httplib.h>
#include <mutex>
#include <thread>
#include <vector>

/// A model on a free port of this machine that answers each request as it was told last.
class ScriptedModel final {
public:
    using Script = std::function<void(httplib::Response &)>;

    explicit ScriptedModel(Script script = {});
    ~ScriptedModel();
    ScriptedModel(const ScriptedModel &) = delete;
    ScriptedModel &operator=(const ScriptedModel &) = delete;

    void setScript(Script script);

    /// With a key that occurs nowhere else.
    ModelSettings settings() const;
    static constexpr auto key = "k3y-of-the-model";

    /// Those that came so far.
    std::vector<httplib::Request> requests() const;

    /// An event with a piece of text.
    static QByteArray event(const QByteArray &text);
    /// Sends these bytes, each part by itself, and then the end of the reply.
    static Script sending(const QList<QByteArray> &parts);
    /// Sends them, and breaks off.
    static Script breakingOffAfter(const QList<QByteArray> &parts);
    /// Sends them, and then nothing until the other side hangs up.
    Script fallingSilentAfter(const QList<QByteArray> &parts);

    /// Whether so many have come, or hung up on a silent reply, before patience ends.
    bool awaitRequests(int count);
    bool awaitHangUps(int count);

private:
    httplib::Server m_server;
    int m_port;
    mutable std::mutex m_mutex;
    Script m_script;
    std::vector<httplib::Request> m_requests;
    int m_hangUps = 0;
    std::condition_variable m_changed;
    std::thread m_thread;
};
