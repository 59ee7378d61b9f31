#include "WallStore.h"

#include "Database.h"
#include "RequestError.h"

#include "records/Json.h"

namespace {

void checkRoom(Database::Access &access, qint64 account) {
    auto query = access.prepare("SELECT count(*) FROM wall_items WHERE account = ?");
    query.bind(account).next();
    if (query.integer(0) >= WallStore::greatestCount)
        throw RequestError(409, QStringLiteral("wall_full"),
                           QStringLiteral("The wall is full: it holds %1 items at most.")
                               .arg(WallStore::greatestCount));
}

} // namespace

WallStore::WallStore(Database &database) : m_database(database) {}

QList<WallItem> WallStore::items(qint64 account) const {
    QList<QByteArray> texts;
    {
        Database::Access access(m_database);
        auto query =
            access.prepare("SELECT item FROM wall_items WHERE account = ? ORDER BY number DESC");
        query.bind(account);
        while (query.next())
            texts.append(query.utf8(0));
    }
    QList<WallItem> items;
    for (QByteArray &text : texts)
        items.append(Json::decode<WallItem>(std::move(text)));
    return items;
}

void WallStore::add(qint64 account, const WallItem &item) const {
    const auto archive = item.caseId ? item.archiveID().value_or(QString()) : QString();
    const auto text = Json::encode(item);
    Database::Access access(m_database);
    checkRoom(access, account);
    // Twice the same case at the same time leaves it once.
    access
        .prepare("INSERT INTO wall_items (account, id, archive, caseId, item)"
                 " VALUES (?, ?, ?, ?, ?) ON CONFLICT DO NOTHING")
        .bind(account)
        .bind(item.id)
        .bind(archive)
        .bind(item.caseId.value_or(QString()))
        .bind(text)
        .run();
}

std::optional<WallItem> WallStore::replaceChat(qint64 account, WallItem item) const {
    Database::Access access(m_database);
    auto query = access.prepare("SELECT item FROM wall_items"
                                " WHERE account = ? AND id = ? AND caseId = ''");
    query.bind(account).bind(item.id);
    if (!query.next())
        return std::nullopt;
    item.createdAt = Json::decode<WallItem>(query.utf8(0)).createdAt;
    access.prepare("UPDATE wall_items SET item = ? WHERE account = ? AND id = ?")
        .bind(Json::encode(item))
        .bind(account)
        .bind(item.id)
        .run();
    return item;
}

void WallStore::remove(qint64 account, const QString &id) const {
    Database::Access access(m_database);
    access.prepare("DELETE FROM wall_items WHERE account = ? AND id = ?")
        .bind(account)
        .bind(id)
        .run();
}

bool WallStore::removeCase(qint64 account, const QString &archive, const QString &id) const {
    Database::Access access(m_database);
    auto removal = access.prepare("DELETE FROM wall_items"
                                  " WHERE account = ? AND archive = ? AND caseId = ? RETURNING 1");
    return removal.bind(account).bind(archive).bind(id).run();
}
