#include "Database.h"

#include "DatabaseError.h"
#include "DatabaseFile.h"

#include <sqlite3.h>

namespace {

constexpr int busyTimeoutMilliseconds = 5000;

} // namespace

Database::Database(const QString &directory) {
    const QString path = DatabaseFile::prepare(directory);
    const int result = sqlite3_open_v2(path.toUtf8().constData(), &m_connection,
                                       SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, nullptr);
    try {
        if (result != SQLITE_OK)
            throw DatabaseError(sqlite3_errstr(result));
        sqlite3_busy_timeout(m_connection, busyTimeoutMilliseconds);
        // A new file gets the number before the write-ahead log, so that it is in the file itself
        // from the first byte on and a later start recognises it whatever happens in between.
        if (DatabaseFile::isEmpty(path))
            execute("PRAGMA application_id=" + QByteArray::number(DatabaseFile::applicationId));
        execute("PRAGMA journal_mode=WAL");
        execute("PRAGMA foreign_keys=ON");
    } catch (const DatabaseError &error) {
        sqlite3_close(m_connection);
        throw DatabaseError("Cannot open the database " + path.toStdString() + ": " + error.what());
    }
}

Database::~Database() {
    for (sqlite3_stmt *statement : std::as_const(m_idleStatements))
        sqlite3_finalize(statement);
    sqlite3_close(m_connection);
}

void Database::execute(const QByteArray &sql) {
    if (sqlite3_exec(m_connection, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
        throw DatabaseError(sqlite3_errmsg(m_connection));
}

sqlite3_stmt *Database::take(const QByteArray &sql) {
    if (sqlite3_stmt *idle = m_idleStatements.take(sql))
        return idle;
    sqlite3_stmt *statement = nullptr;
    if (sqlite3_prepare_v3(m_connection, sql.constData(), static_cast<int>(sql.size()),
                           SQLITE_PREPARE_PERSISTENT, &statement, nullptr) != SQLITE_OK)
        throw DatabaseError(sqlite3_errmsg(m_connection));
    return statement;
}

void Database::giveBack(const QByteArray &sql, sqlite3_stmt *statement) {
    m_idleStatements.insert(sql, statement);
}

Database::Access::Access(Database &database) : m_database(database), m_lock(database.m_mutex) {}

Statement Database::Access::prepare(const QByteArray &sql) {
    return Statement(m_database, sql, m_database.take(sql));
}

void Database::Access::execute(const QByteArray &sql) {
    m_database.execute(sql);
}

Database::Transaction::Transaction(Access &access) : m_access(access) {
    m_access.execute("BEGIN IMMEDIATE");
}

Database::Transaction::~Transaction() {
    if (!m_open)
        return;
    try {
        m_access.execute("ROLLBACK");
    } catch (const DatabaseError &) {
        // Some failures have rolled back by themselves; the one on its way tells what went wrong.
    }
}

void Database::Transaction::commit() {
    m_access.execute("COMMIT");
    m_open = false;
}
