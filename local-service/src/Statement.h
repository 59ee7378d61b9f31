#pragma once

#include <QByteArray>
#include <QString>

class Database;
struct sqlite3_stmt;

/// A prepared statement, on loan from its database for as long as this object lives. Values are
/// bound in the order of the placeholders.
class Statement final {
public:
    Statement(Database &database, QByteArray sql, sqlite3_stmt *handle);
    ~Statement();
    Statement(const Statement &) = delete;
    Statement &operator=(const Statement &) = delete;

    Statement &bind(const QString &text);
    Statement &bind(const QByteArray &utf8);
    Statement &bind(qint64 number);

    /// Goes to the next row; false when there is none. Throws DatabaseError.
    bool next();

    /// Runs the statement to its end and readies it for new values. Gives whether there was a row:
    /// with RETURNING, whether anything was changed.
    bool run();

    QString text(int column) const;
    QByteArray utf8(int column) const;
    qint64 integer(int column) const;

private:
    void check(int result) const;

    Database &m_database;
    QByteArray m_sql;
    sqlite3_stmt *m_handle;
    int m_bound = 0;
};
