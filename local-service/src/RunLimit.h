#pragma once

#include <atomic>
#include <memory>

/// Admits only so many runs at a time. Every operation may be called on any thread.
class RunLimit final : public std::enable_shared_from_this<RunLimit> {
public:
    /// Counts as a run for as long as it lives.
    using Place = std::shared_ptr<void>;

    static std::shared_ptr<RunLimit> make(int greatestCount) {
        return std::shared_ptr<RunLimit>(new RunLimit(greatestCount));
    }

    /// Nothing when all places are taken. A place keeps its limit alive.
    Place admit();

private:
    explicit RunLimit(int greatestCount) : m_free(greatestCount) {}

    std::atomic<int> m_free;
};
