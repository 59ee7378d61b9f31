#pragma once

#include "platform/CancellationError.h"
#include "platform/Task.h"

#include <QFuture>
#include <QThreadPool>
#include <QtConcurrentRun>

#include <qcoro/qcorofuture.h>

#include <exception>
#include <memory>
#include <stop_token>
#include <type_traits>
#include <utility>
#include <variant>

/// Runs the function on a worker thread and gives what it gives, or throws what it throws; throws
/// CancellationError instead once `stop` was requested. Called on the main thread, and goes on
/// there.
///
/// The result is handed over, not copied: a future would keep a copy of its own and let go of it on
/// the main thread, which takes long for a large one.
template <class Function>
[[nodiscard]] Task<std::invoke_result_t<Function &>> onWorker(Function function,
                                                              std::stop_token stop = {}) {
    using Result = std::invoke_result_t<Function &>;
    const auto outcome = std::make_shared<std::variant<std::exception_ptr, Result>>();
    QFuture<void> working = QtConcurrent::run([outcome, function = std::move(function)]() mutable {
        try {
            outcome->template emplace<Result>(function());
        } catch (...) {
            outcome->template emplace<std::exception_ptr>(std::current_exception());
        }
    });
    co_await working;
    if (stop.stop_requested())
        throw CancellationError();
    if (auto *error = std::get_if<std::exception_ptr>(outcome.get()))
        std::rethrow_exception(*error);
    co_return std::move(std::get<Result>(*outcome));
}

/// Ends a value on a worker thread: one that is so large that freeing its memory takes long.
template <class Value>
void letGoOnWorker(Value value) {
    QThreadPool::globalInstance()->start([value = std::move(value)] {});
}
