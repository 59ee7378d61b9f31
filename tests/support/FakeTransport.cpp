#include "tests/support/FakeTransport.h"

#include "platform/CancellationError.h"

#include <QCoreApplication>
#include <QMetaObject>
#include <gtest/gtest.h>

#include <algorithm>

FakeTransport::~FakeTransport() {
    for (const auto &pending : m_pending) {
        if (!pending.completion.isComplete())
            ADD_FAILURE() << "never answered: " << qPrintable(pending.path);
    }
}

Task<FakeTransport::Reply> FakeTransport::reply(HttpRequest request, std::stop_token stop) {
    if (stop.stop_requested())
        throw CancellationError();
    Completion<Reply> completion;
    const auto path = request.url.path();
    m_pending.push_back(Pending{path, completion});
    if (m_always.contains(path)) {
        QMetaObject::invokeMethod(
            QCoreApplication::instance(),
            [completion, response = m_always.value(path)]() mutable {
                completion.succeed(response);
            },
            Qt::QueuedConnection);
    }
    m_requests.push_back(std::move(request));
    std::function<void()> onStop = [completion]() mutable {
        completion.fail(std::make_exception_ptr(CancellationError()));
    };
    std::stop_callback stopping(stop, onStop);
    auto waiting = completion.result();
    Reply reply = co_await waiting;
    co_return reply;
}

Task<HttpResponse> FakeTransport::data(HttpRequest request, std::stop_token stop) {
    auto waiting = reply(std::move(request), std::move(stop));
    Reply reply = co_await waiting;
    co_return std::get<HttpResponse>(reply);
}

Task<std::unique_ptr<ByteStream>> FakeTransport::stream(HttpRequest request, std::stop_token stop) {
    auto waiting = reply(std::move(request), stop);
    Reply reply = co_await waiting;
    co_return std::get<std::shared_ptr<FakeBody>>(reply)->reader(stop);
}

qsizetype FakeTransport::waiting(const QString &path) const {
    return std::count_if(m_pending.begin(), m_pending.end(), [&](const Pending &pending) {
        return pending.path == path && !pending.completion.isComplete();
    });
}

std::optional<Completion<FakeTransport::Reply>> FakeTransport::next(const QString &path) const {
    for (const auto &pending : m_pending) {
        if (pending.path == path && !pending.completion.isComplete())
            return pending.completion;
    }
    ADD_FAILURE() << "nothing waits for an answer from " << qPrintable(path);
    return std::nullopt;
}

void FakeTransport::answer(const QString &path, int status, const QByteArray &body) {
    if (auto completion = next(path))
        completion->succeed(HttpResponse{status, body});
}

void FakeTransport::fail(const QString &path, URLError::Code code) {
    if (auto completion = next(path))
        completion->fail(std::make_exception_ptr(URLError(code)));
}

bool FakeTransport::abandon() {
    bool any = false;
    for (const auto &pending : m_pending) {
        if (pending.completion.isComplete())
            continue;
        any = true;
        auto completion = pending.completion;
        completion.fail(std::make_exception_ptr(CancellationError()));
    }
    return any;
}

void FakeTransport::always(const QString &path, const std::optional<HttpResponse> &response) {
    if (response)
        m_always.insert(path, *response);
    else
        m_always.remove(path);
}

std::shared_ptr<FakeBody> FakeTransport::answerHead(const QString &path, int status) {
    auto body = std::make_shared<FakeBody>(status);
    if (auto completion = next(path))
        completion->succeed(body);
    return body;
}
