#pragma once

#include "platform/Task.h"

#include <chrono>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>

/// Longer than anything takes on a busy machine, shorter than a person's patience.
inline constexpr std::chrono::seconds patience(20);

/// Turns the event loop until the condition holds; false when it still does not after the limit.
[[nodiscard]] bool eventually(const std::function<bool()> &condition,
                              std::chrono::milliseconds limit = patience);

/// Turns the event loop until everything that was already due has happened.
void settleEventLoop();

template <class Result>
struct Settlement {
    std::optional<Result> result;
    std::exception_ptr error;
    bool ended = false;
};

template <class Result>
[[nodiscard]] Task<void> settle(Task<Result> task, std::shared_ptr<Settlement<Result>> settlement) {
    try {
        Result result = co_await task;
        settlement->result = std::move(result);
    } catch (...) {
        settlement->error = std::current_exception();
    }
    settlement->ended = true;
}

[[nodiscard]] inline Task<void> settle(Task<void> task,
                                       std::shared_ptr<Settlement<bool>> settlement) {
    try {
        co_await task;
        settlement->result = true;
    } catch (...) {
        settlement->error = std::current_exception();
    }
    settlement->ended = true;
}

/// Runs the task to its end and gives its result or throws its exception. A task that does not end
/// within the limit fails the test.
template <class Result>
Result await(Task<Result> task, std::chrono::milliseconds limit = patience) {
    using Kept = std::conditional_t<std::is_void_v<Result>, bool, Result>;
    const auto settlement = std::make_shared<Settlement<Kept>>();
    const auto settling = settle(std::move(task), settlement);
    if (!eventually([&] { return settlement->ended; }, limit))
        throw std::runtime_error("the task has not ended within " + std::to_string(limit.count()) +
                                 " ms");
    if (settlement->error)
        std::rethrow_exception(settlement->error);
    if constexpr (!std::is_void_v<Result>)
        return std::move(*settlement->result);
}
