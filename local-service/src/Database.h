#pragma once

#include "Statement.h"

#include <QByteArray>
#include <QMultiHash>
#include <QString>

#include <mutex>

struct sqlite3;

/// The one connection to the service's database. All threads share it, one at a time: the queries
/// take far less than a millisecond, which does not pay for a connection in each thread.
class Database final {
public:
    /// Opens the database in `directory`, making both where there is none. Throws DatabaseError.
    explicit Database(const QString &directory);
    ~Database();
    Database(const Database &) = delete;
    Database &operator=(const Database &) = delete;

    /// The connection in the hands of one caller, until this object goes. Statements exist only
    /// through it. A caller that holds one must not ask for a second.
    class Access final {
    public:
        explicit Access(Database &database);

        /// A statement for this text, taken from those prepared before where there is one.
        Statement prepare(const QByteArray &sql);
        /// Runs texts that have no values and give no rows.
        void execute(const QByteArray &sql);

    private:
        Database &m_database;
        std::unique_lock<std::mutex> m_lock;
    };

    /// All or nothing: undone when it goes without a commit.
    class Transaction final {
    public:
        explicit Transaction(Access &access);
        ~Transaction();
        Transaction(const Transaction &) = delete;
        Transaction &operator=(const Transaction &) = delete;

        void commit();

    private:
        Access &m_access;
        bool m_open = true;
    };

private:
    friend Statement;

    void execute(const QByteArray &sql);
    sqlite3_stmt *take(const QByteArray &sql);
    void giveBack(const QByteArray &sql, sqlite3_stmt *statement);

    sqlite3 *m_connection = nullptr;
    std::mutex m_mutex;
    QMultiHash<QByteArray, sqlite3_stmt *> m_idleStatements;
};
