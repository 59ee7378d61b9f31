#include "tests/simulation/VirtualNetwork.h"

#include "platform/CancellationError.h"

namespace {

using Code = URLError::Code;

template <class Result>
Task<Result> waitFor(Completion<Result> completion, std::stop_token stop) {
    std::function<void()> onStop = [completion]() mutable {
        completion.fail(std::make_exception_ptr(CancellationError()));
    };
    std::stop_callback stopping(stop, onStop);
    auto waiting = completion.result();
    Result result = co_await waiting;
    co_return result;
}

} // namespace

Task<HttpResponse> VirtualNetwork::Line::data(HttpRequest request, std::stop_token stop) {
    if (m_cut || stop.stop_requested())
        throw CancellationError();
    Completion<HttpResponse> completion;
    m_network.m_messages.push_back(
        {this, m_device, std::move(request), completion, {}, {}, {}, {}});
    auto waiting = waitFor(completion, stop);
    HttpResponse response = co_await waiting;
    co_return response;
}

Task<std::unique_ptr<ByteStream>> VirtualNetwork::Line::stream(HttpRequest request,
                                                               std::stop_token stop) {
    if (m_cut || stop.stop_requested())
        throw CancellationError();
    Completion<std::shared_ptr<FakeBody>> completion;
    m_network.m_messages.push_back(
        {this, m_device, std::move(request), {}, completion, {}, {}, {}});
    auto waiting = waitFor(completion, stop);
    const auto body = co_await waiting;
    co_return body->reader(stop);
}

void VirtualNetwork::Line::cut() {
    m_cut = true;
    const auto cancelled = std::make_exception_ptr(CancellationError());
    for (auto &message : m_network.m_messages) {
        if (message.line != this)
            continue;
        if (message.whole)
            message.whole->fail(cancelled);
        if (message.streamed)
            message.streamed->fail(cancelled);
        if (message.body)
            message.body->breakOff(Code::networkConnectionLost);
        message.line = nullptr;
    }
}

void VirtualNetwork::fail(Message &message, Code code) {
    const auto error = std::make_exception_ptr(URLError(code));
    if (message.whole)
        message.whole->fail(error);
    if (message.streamed)
        message.streamed->fail(error);
}

QString VirtualNetwork::step(Random &random, bool faulty) {
    const auto place = std::next(m_messages.begin(), random.below(int(m_messages.size())));
    const auto path = place->request.url.path();
    const auto fate = !place->response ? moveRequest(place, random, faulty)
                      : place->whole   ? moveReply(place, random, faulty)
                                       : moveStream(place, random, faulty);
    return path + QLatin1String(": ") + fate;
}

QString VirtualNetwork::moveRequest(Place place, Random &random, bool faulty) {
    const int fate = faulty ? random.below(100) : 100;
    if (fate < 10) {
        fail(*place, Code::networkConnectionLost);
        m_messages.erase(place);
        return QStringLiteral("request lost");
    }
    if (fate < 16) {
        fail(*place, Code::timedOut);
        return QStringLiteral("request late");
    }
    if (fate < 26)
        m_service(place->request, place->device);
    place->response = m_service(place->request, place->device);
    return fate < 26 ? QStringLiteral("request served twice") : QStringLiteral("request served");
}

QString VirtualNetwork::moveReply(Place place, Random &random, bool faulty) {
    const bool lost = faulty && random.chance(12);
    if (lost)
        fail(*place, Code::networkConnectionLost);
    else
        place->whole->succeed(*place->response);
    m_messages.erase(place);
    return lost ? QStringLiteral("reply lost") : QStringLiteral("reply received");
}

QString VirtualNetwork::moveStream(Place place, Random &random, bool faulty) {
    auto &message = *place;
    if (!message.body) {
        message.body = std::make_shared<FakeBody>(message.response->status);
        message.pieces = message.response->body.split('\n');
        message.streamed->succeed(message.body);
        return QStringLiteral("head received");
    }
    if (faulty && random.chance(8)) {
        message.body->breakOff(Code::networkConnectionLost);
        m_messages.erase(place);
        return QStringLiteral("broken off");
    }
    if (message.pieces.isEmpty()) {
        message.body->end();
        m_messages.erase(place);
        return QStringLiteral("ended");
    }
    message.body->send(message.pieces.takeFirst() + '\n');
    return QStringLiteral("piece received");
}
