#include "AttemptLimit.h"

std::optional<std::chrono::milliseconds> AttemptLimit::admit(const QString &name, qint64 now) {
    const std::lock_guard lock(m_mutex);
    // A clock that was set back ends a window as well, or it would last until the old time returns.
    m_attempts.removeIf([now](const auto &entry) {
        return now < entry->first || now - entry->first >= window.count();
    });
    auto &attempts = m_attempts[name];
    if (attempts.count == 0)
        attempts.first = now;
    if (attempts.count == greatestCount)
        return window - std::chrono::milliseconds(now - attempts.first);
    ++attempts.count;
    return std::nullopt;
}

void AttemptLimit::forget(const QString &name) {
    const std::lock_guard lock(m_mutex);
    m_attempts.remove(name);
}
