#pragma once

#include <QGuiApplication>
#include <QThread>

#include <algorithm>
#include <time.h>
#include <utility>

/// Knows the most that the main thread has worked on one event. Waiting does not count.
class TimedApplication final : public QGuiApplication {
public:
    using QGuiApplication::QGuiApplication;

    bool notify(QObject *receiver, QEvent *event) override {
        if (m_inside || QThread::currentThread() != thread())
            return QGuiApplication::notify(receiver, event);
        m_inside = true;
        const auto before = worked();
        const bool result = QGuiApplication::notify(receiver, event);
        m_longest = std::max(m_longest, worked() - before);
        m_inside = false;
        return result;
    }

    /// Seconds, since the last call.
    double takeLongest() { return static_cast<double>(std::exchange(m_longest, 0)) / 1e9; }

    /// Nanoseconds that this thread has worked.
    static qint64 worked() {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return time.tv_sec * 1'000'000'000LL + time.tv_nsec;
    }

private:
    bool m_inside = false;
    qint64 m_longest = 0;
};
