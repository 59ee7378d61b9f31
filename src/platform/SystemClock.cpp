#include "platform/SystemClock.h"

#include "platform/CancellationError.h"
#include "platform/Completion.h"

#include <QTimer>

#include <functional>

QDateTime SystemClock::now() const {
    return QDateTime::currentDateTimeUtc();
}

Task<void> SystemClock::sleep(std::chrono::milliseconds duration, std::stop_token stop) {
    Completion<bool> elapsed;
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, [elapsed]() mutable { elapsed.succeed(true); });
    timer.start(duration);
    std::function<void()> onStop = [elapsed]() mutable {
        elapsed.fail(std::make_exception_ptr(CancellationError()));
    };
    std::stop_callback stopping(stop, onStop);
    auto waiting = elapsed.result();
    co_await waiting;
}
