#include "store/FramePace.h"

#include "platform/CancellationError.h"
#include "platform/Clock.h"
#include "platform/Start.h"

FramePace::FramePace(Clock &clock, std::function<void()> tell)
    : m_clock(clock), m_tell(std::move(tell)) {}

FramePace::~FramePace() {
    m_stop.request_stop();
}

void FramePace::changed() {
    m_untold = true;
    if (m_passing)
        return;
    m_passing = true;
    start([this, stop = m_stop.get_token()] {
        if (stop.stop_requested())
            throw CancellationError();
        return passFrames(stop);
    });
    flush();
}

void FramePace::flush() {
    if (std::exchange(m_untold, false))
        m_tell();
}

/// Once `stop` was requested nothing of the object is touched: it may be gone.
Task<void> FramePace::passFrames(std::stop_token stop) {
    bool busy = true;
    while (busy) {
        auto sleeping = m_clock.sleep(frame, stop);
        co_await sleeping;
        if (stop.stop_requested())
            throw CancellationError();
        busy = m_untold;
        flush();
    }
    m_passing = false;
}
