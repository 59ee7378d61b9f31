#pragma once

#include "Statement.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <limits>
#include <optional>

/// A search over the cases: what is asked, and the query that it makes.
struct CaseSearch {
    enum class Order { Recent, Year, Significance };

    static constexpr qint64 defaultLimit = 24;
    static constexpr qint64 greatestLimit = 100;

    /// Folded words that a case must all have; the last one may be the beginning of a word.
    QStringList words;
    /// Absent: all of them.
    std::optional<QStringList> archives;
    /// Empty: all of them.
    QString category;
    qint64 firstYear = std::numeric_limits<qint64>::min();
    qint64 lastYear = std::numeric_limits<qint64>::max();
    /// "Recent" with words means the best match first.
    Order order = Order::Recent;
    qint64 offset = 0;
    qint64 limit = defaultLimit;

    /// Everything from FROM to the end of the conditions. The text depends only on which conditions
    /// there are; what is asked is bound.
    QByteArray source() const;
    QByteArray ordering() const;
    void bindSource(Statement &statement) const;
};
