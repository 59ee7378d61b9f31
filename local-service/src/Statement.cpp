#include "Statement.h"

#include "Database.h"
#include "DatabaseError.h"

#include <sqlite3.h>

Statement::Statement(Database &database, QByteArray sql, sqlite3_stmt *handle)
    : m_database(database), m_sql(std::move(sql)), m_handle(handle) {}

Statement::~Statement() {
    sqlite3_reset(m_handle);
    sqlite3_clear_bindings(m_handle);
    m_database.giveBack(m_sql, m_handle);
}

void Statement::check(int result) const {
    if (result != SQLITE_OK && result != SQLITE_ROW && result != SQLITE_DONE)
        throw DatabaseError(sqlite3_errmsg(sqlite3_db_handle(m_handle)));
}

Statement &Statement::bind(const QString &text) {
    return bind(text.toUtf8());
}

Statement &Statement::bind(const QByteArray &utf8) {
    check(sqlite3_bind_text(m_handle, ++m_bound, utf8.constData(), static_cast<int>(utf8.size()),
                            SQLITE_TRANSIENT));
    return *this;
}

Statement &Statement::bind(qint64 number) {
    check(sqlite3_bind_int64(m_handle, ++m_bound, number));
    return *this;
}

bool Statement::next() {
    const int result = sqlite3_step(m_handle);
    check(result);
    return result == SQLITE_ROW;
}

bool Statement::run() {
    bool hasRow = false;
    while (next())
        hasRow = true;
    sqlite3_reset(m_handle);
    m_bound = 0;
    return hasRow;
}

QString Statement::text(int column) const {
    return QString::fromUtf8(utf8(column));
}

QByteArray Statement::utf8(int column) const {
    const auto *bytes = static_cast<const char *>(sqlite3_column_blob(m_handle, column));
    return QByteArray(bytes, sqlite3_column_bytes(m_handle, column));
}

qint64 Statement::integer(int column) const {
    return sqlite3_column_int64(m_handle, column);
}
