#include "ScriptedModel.h"

namespace {

constexpr auto eventStream = "text/event-stream";
constexpr std::chrono::seconds patience(30);

void sendAll(const QList<QByteArray> &parts, httplib::DataSink &sink) {
    for (const QByteArray &part : parts)
        sink.write(part.constData(), static_cast<std::size_t>(part.size()));
}

} // namespace

ScriptedModel::ScriptedModel(Script script)
    : m_port(m_server.bind_to_any_port("127.0.0.1")), m_script(std::move(script)) {
    m_server.Post("/v1/chat/completions",
                  [this](const httplib::Request &request, httplib::Response &response) {
                      const std::lock_guard lock(m_mutex);
                      m_requests.push_back(request);
                      m_changed.notify_all();
                      m_script(response);
                  });
    m_thread = std::thread([this] { m_server.listen_after_bind(); });
    while (!m_server.is_running())
        std::this_thread::yield();
}

ScriptedModel::~ScriptedModel() {
    m_server.stop();
    m_thread.join();
}

void ScriptedModel::setScript(Script script) {
    const std::lock_guard lock(m_mutex);
    m_script = std::move(script);
}

ModelSettings ScriptedModel::settings() const {
    ModelSettings settings;
    settings.url =
        QUrl(QStringLiteral("http://127.0.0.1:%1/v1/chat/completions?version=a%20b").arg(m_port));
    settings.name = QStringLiteral("a \"small\" one");
    settings.key = key;
    return settings;
}

std::vector<httplib::Request> ScriptedModel::requests() const {
    const std::lock_guard lock(m_mutex);
    return m_requests;
}

QByteArray ScriptedModel::event(const QByteArray &text) {
    return R"(data: {"id":"1","choices":[{"index":0,"delta":{"content":")" + text +
           R"("},"finish_reason":null}]})" + "\n\n";
}

ScriptedModel::Script ScriptedModel::sending(const QList<QByteArray> &parts) {
    return [parts](httplib::Response &response) {
        response.set_chunked_content_provider(eventStream,
                                              [parts](std::size_t, httplib::DataSink &sink) {
                                                  sendAll(parts, sink);
                                                  sink.done();
                                                  return true;
                                              });
    };
}

ScriptedModel::Script ScriptedModel::breakingOffAfter(const QList<QByteArray> &parts) {
    return [parts](httplib::Response &response) {
        response.set_chunked_content_provider(eventStream,
                                              [parts](std::size_t, httplib::DataSink &sink) {
                                                  sendAll(parts, sink);
                                                  return false;
                                              });
    };
}

ScriptedModel::Script ScriptedModel::fallingSilentAfter(const QList<QByteArray> &parts) {
    return [this, parts](httplib::Response &response) {
        response.set_chunked_content_provider(
            eventStream, [this, parts](std::size_t offset, httplib::DataSink &sink) {
                if (offset == 0)
                    sendAll(parts, sink);
                std::unique_lock lock(m_mutex);
                // The library tells of a closed connection only when it is asked.
                while (sink.is_writable())
                    m_changed.wait_for(lock, std::chrono::milliseconds(1));
                ++m_hangUps;
                m_changed.notify_all();
                return false;
            });
    };
}

bool ScriptedModel::awaitRequests(int count) {
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, patience, [&] { return std::ssize(m_requests) >= count; });
}

bool ScriptedModel::awaitHangUps(int count) {
    std::unique_lock lock(m_mutex);
    return m_changed.wait_for(lock, patience, [&] { return m_hangUps >= count; });
}
