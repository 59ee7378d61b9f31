#include "CaseRequests.h"

#include "Database.h"

bool CaseRequests::add(Database &database, qint64 account, const QString &archive,
                       const QString &question, qint64 now) {
    Database::Access access(database);
    auto insert =
        access.prepare("INSERT INTO case_requests (account, archive, question, requestedAt)"
                       " VALUES (?, ?, ?, ?) ON CONFLICT DO NOTHING RETURNING 1");
    return insert.bind(account).bind(archive).bind(question).bind(now).run();
}
