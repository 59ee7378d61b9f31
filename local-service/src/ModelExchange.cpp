#include "ModelExchange.h"

#include "records/JsonDecoder.h"
#include "records/JsonEncoder.h"

#include <cstdio>

namespace {

using namespace std::chrono_literals;

constexpr auto connectTimeout = 5s;
/// In bytes; far beyond any answer that somebody would read.
constexpr std::size_t greatestReply = 4 * 1024 * 1024;
constexpr auto lastEvent = "[DONE]";

struct Question {
    QString model;
    bool stream = true;
    QList<ChatRequest::Message> messages;
};

struct Delta {
    std::optional<QString> content;
};

struct Choice {
    std::optional<Delta> delta;
    std::optional<QString> finishReason;
};

/// What an event holds. The report of an error has no choices, and is refused by that.
struct Chunk {
    QList<Choice> choices;
};

std::string origin(const QUrl &url) {
    return url.toString(QUrl::RemovePath | QUrl::RemoveQuery | QUrl::FullyEncoded).toStdString();
}

std::string target(const QUrl &url) {
    return url.toString(QUrl::RemoveScheme | QUrl::RemoveAuthority | QUrl::FullyEncoded)
        .toStdString();
}

} // namespace

template <>
struct JsonFields<Question> {
    static constexpr auto table = std::make_tuple(jsonField("model", &Question::model),
                                                  jsonField("stream", &Question::stream),
                                                  jsonField("messages", &Question::messages));
};

template <>
struct JsonFields<Delta> {
    static constexpr auto table = std::make_tuple(jsonField("content", &Delta::content));
};

template <>
struct JsonFields<Choice> {
    static constexpr auto table = std::make_tuple(
        jsonField("delta", &Choice::delta), jsonField("finish_reason", &Choice::finishReason));
};

template <>
struct JsonFields<Chunk> {
    static constexpr auto table = std::make_tuple(jsonField("choices", &Chunk::choices));
};

ModelExchange::ModelExchange(const ModelSettings &settings,
                             const QList<ChatRequest::Message> &messages)
    : m_settings(settings), m_client(origin(settings.url)) {
    m_client.set_connection_timeout(connectTimeout);
    // Whoever awaits the pieces has given up long before.
    m_client.set_read_timeout(2 * settings.longestSilence);
    m_client.set_url_encode(false);
    m_thread = std::thread(&ModelExchange::run, this,
                           Json::encode(Question{settings.name, true, messages}));
}

ModelExchange::~ModelExchange() {
    std::unique_lock lock(m_mutex);
    m_stopped = true;
    while (!m_over) {
        lock.unlock();
        // Has no effect on a connection that is not made yet, hence again and again.
        m_client.stop();
        lock.lock();
        m_changed.wait_for(lock, 20ms, [&] { return m_over; });
    }
    lock.unlock();
    m_thread.join();
}

std::optional<ModelExchange::Arrival> ModelExchange::await(std::chrono::milliseconds time) {
    std::unique_lock lock(m_mutex);
    if (!m_changed.wait_for(lock, time, [&] { return !m_arrivals.empty(); }))
        return std::nullopt;
    auto arrival = std::move(m_arrivals.front());
    m_arrivals.pop_front();
    return arrival;
}

void ModelExchange::run(const QByteArray &body) {
    httplib::Request request;
    request.method = "POST";
    request.path = target(m_settings.url);
    request.headers = {{"Accept", "text/event-stream"},
                       // A compressed stream comes in lumps.
                       {"Accept-Encoding", "identity"},
                       {"Content-Type", "application/json"}};
    if (!m_settings.key.isEmpty())
        request.headers.emplace("Authorization", "Bearer " + m_settings.key.toStdString());
    request.body = body.toStdString();
    ask(request);

    const std::lock_guard lock(m_mutex);
    m_over = true;
    m_changed.notify_all();
}

void ModelExchange::ask(httplib::Request &request) {
    int status = 0;
    request.response_handler = [&](const httplib::Response &response) {
        status = response.status;
        return status == 200;
    };
    request.content_receiver = [&](const char *bytes, std::size_t size, std::uint64_t,
                                   std::uint64_t) {
        return receive({bytes, size});
    };
    httplib::Response response;
    auto error = httplib::Error::Success;
    m_client.send(request, response, error);

    if (m_finished && m_hasText)
        push({Arrival::Kind::End, {}});
    else if (m_finished)
        fail("no text");
    else if (!m_fault.empty())
        fail(m_fault);
    else if (status != 0 && status != 200)
        fail("status " + std::to_string(status));
    else if (error != httplib::Error::Success)
        fail(httplib::to_string(error));
    else
        fail("the reply ended early");
}

bool ModelExchange::receive(std::string_view bytes) {
    m_received += bytes.size();
    if (m_received > greatestReply) {
        m_fault = "the reply is too long";
        return false;
    }
    try {
        for (const QByteArray &event : m_reader.read(bytes)) {
            if (!take(event))
                return false;
        }
    } catch (const DecodingError &error) {
        m_fault = std::string("an event is no part of an answer: ") + error.what();
        return false;
    }
    const std::lock_guard lock(m_mutex);
    return !m_stopped;
}

bool ModelExchange::take(const QByteArray &event) {
    m_finished = event == lastEvent;
    if (m_finished)
        return false;
    const auto chunk = Json::decode<Chunk>(event);
    for (const Choice &choice : chunk.choices) {
        const auto text = choice.delta.value_or(Delta()).content.value_or(QString());
        if (!text.isEmpty()) {
            m_hasText = true;
            push({Arrival::Kind::Text, text});
        }
        // The last event may never come after this.
        m_finished = m_finished || choice.finishReason.has_value();
    }
    return !m_finished;
}

void ModelExchange::push(Arrival arrival) {
    const std::lock_guard lock(m_mutex);
    m_arrivals.push_back(std::move(arrival));
    m_changed.notify_all();
}

void ModelExchange::fail(const std::string &reason) {
    {
        const std::lock_guard lock(m_mutex);
        if (m_stopped)
            return;
    }
    std::fprintf(stderr, "The model gave no whole answer: %s\n", reason.c_str());
    push({Arrival::Kind::Failure, {}});
}
