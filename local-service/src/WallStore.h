#pragma once

#include "records/Wall.h"

#include <optional>

class Database;

/// The walls of the accounts. Every operation may be called on any thread; `account` is the number
/// of a Session.
class WallStore final {
public:
    /// One wall holds at most this many items.
    static constexpr qint64 greatestCount = 1000;

    explicit WallStore(Database &database);

    /// From the newest to the oldest.
    QList<WallItem> items(qint64 account) const;

    /// Adds an item as the newest. Throws the RequestError "wall_full".
    void add(qint64 account, const WallItem &item) const;

    /// Puts an item in the place of the chat that has its id, but keeps the moment when that was
    /// made. Gives what then stands there; absent when there is no such chat.
    std::optional<WallItem> replaceChat(qint64 account, WallItem item) const;

    void remove(qint64 account, const QString &id) const;
    /// False when the case is not on the wall.
    bool removeCase(qint64 account, const QString &archive, const QString &id) const;

private:
    Database &m_database;
};
