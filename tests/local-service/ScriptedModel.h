#pragma once

#include "ModelSettings.h"

#include <QByteArray>
#include <QList>

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
    /// Sends them, and then nothing until the connection is closed; `closed` is called then.
    static Script fallingSilentAfter(
        const QList<QByteArray> &parts, const std::function<void()> &closed = [] {});

private:
    httplib::Server m_server;
    int m_port;
    mutable std::mutex m_mutex;
    Script m_script;
    std::vector<httplib::Request> m_requests;
    std::thread m_thread;
};
