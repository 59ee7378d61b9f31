#pragma once

#include "platform/Task.h"

#include <QCoreApplication>
#include <QMetaObject>

#include <coroutine>
#include <exception>
#include <memory>
#include <optional>
#include <utility>

/// A result that somebody else delivers: the border between callbacks and coroutines.
///
/// One coroutine waits in result(); whoever holds a copy completes it. Only the first completion
/// counts. The waiter goes on in a later turn of the event loop, never inside the call that
/// completed it. All on the main thread.
template <class Result>
class Completion {
public:
    void succeed(Result result) {
        if (m_state->isComplete())
            return;
        m_state->result = std::move(result);
        m_state->wake();
    }

    void fail(std::exception_ptr error) {
        if (m_state->isComplete())
            return;
        m_state->error = std::move(error);
        m_state->wake();
    }

    bool isComplete() const { return m_state->isComplete(); }

    [[nodiscard]] Task<Result> result() const { return wait(m_state); }

private:
    struct State : std::enable_shared_from_this<State> {
        std::optional<Result> result;
        std::exception_ptr error;
        std::coroutine_handle<> waiter;

        bool isComplete() const { return result.has_value() || error != nullptr; }

        void wake() {
            if (!waiter)
                return;
            QMetaObject::invokeMethod(
                QCoreApplication::instance(),
                [state = this->shared_from_this()] { std::exchange(state->waiter, {}).resume(); },
                Qt::QueuedConnection);
        }
    };

    struct Awaiter {
        std::shared_ptr<State> state;

        bool await_ready() const { return state->isComplete(); }
        void await_suspend(std::coroutine_handle<> handle) const { state->waiter = handle; }
        void await_resume() const {}
    };

    static Task<Result> wait(std::shared_ptr<State> state) {
        Awaiter awaiter{state};
        co_await awaiter;
        if (state->error)
            std::rethrow_exception(state->error);
        co_return std::move(*state->result);
    }

    std::shared_ptr<State> m_state = std::make_shared<State>();
};
