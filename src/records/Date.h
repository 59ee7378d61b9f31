#pragma once

#include <QDateTime>

#include <compare>

/// A moment, to the millisecond. Its two written forms are told by DateForm; crossing between them
/// any number of times changes nothing.
struct Date {
    /// Milliseconds since 1970-01-01T00:00:00 UTC.
    qint64 milliseconds = 0;

    static Date from(const QDateTime &moment) { return {moment.toMSecsSinceEpoch()}; }
    QDateTime toDateTime() const { return QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC); }

    auto operator<=>(const Date &) const = default;
};
