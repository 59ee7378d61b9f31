#pragma once

#include "ChatRequest.h"
#include "EventStreamReader.h"
#include "ModelSettings.h"

#include <condition_variable>
#include <deque>
#include <httplib.h>
#include <mutex>
#include <optional>
#include <string_view>
#include <thread>

/// One question to a model and what comes back, on a thread of its own, since the library gives no
/// way to look up from a silent connection. The end of the object closes the connection.
class ModelExchange final {
public:
    struct Arrival {
        enum class Kind {
            Text,
            /// The model has said all.
            End,
            /// It has not, and there is nothing more to come. Standard error has the reason.
            Failure,
        };
        Kind kind = Kind::Text;
        QString text;
    };

    ModelExchange(const ModelSettings &settings, const QList<ChatRequest::Message> &messages);
    ~ModelExchange();
    ModelExchange(const ModelExchange &) = delete;
    ModelExchange &operator=(const ModelExchange &) = delete;

    /// The next piece, as soon as it is there; nothing when none has come for so long.
    std::optional<Arrival> await(std::chrono::milliseconds time);

private:
    /// On the exchange's thread, from here on.
    void run(const QByteArray &body);
    void ask(httplib::Request &request);
    bool receive(std::string_view bytes);
    /// Whether there is more to come.
    bool take(const QByteArray &event);
    void push(Arrival arrival);
    void fail(const std::string &reason);

    const ModelSettings m_settings;
    httplib::Client m_client;
    EventStreamReader m_reader;
    std::size_t m_received = 0;
    bool m_hasText = false;
    bool m_finished = false;
    std::string m_fault;

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<Arrival> m_arrivals;
    bool m_stopped = false;
    bool m_over = false;
    std::thread m_thread;
};
