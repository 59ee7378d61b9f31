#pragma once

#include <QHash>
#include <QString>

#include <chrono>
#include <mutex>
#include <optional>

/// How often a password may be guessed for one name. Every operation may be called on any thread.
class AttemptLimit final {
public:
    static constexpr int greatestCount = 5;
    static constexpr std::chrono::milliseconds window = std::chrono::minutes(5);

    /// Counts an attempt before its outcome is known, so that attempts at the same time count as
    /// well. Where too many have failed nothing is counted, and the result is how long to wait.
    /// `now` is in milliseconds since 1970.
    std::optional<std::chrono::milliseconds> admit(const QString &name, qint64 now);

    /// The attempts so far have ended in a success.
    void forget(const QString &name);

private:
    struct Attempts {
        qint64 first = 0;
        int count = 0;
    };

    std::mutex m_mutex;
    QHash<QString, Attempts> m_attempts;
};
