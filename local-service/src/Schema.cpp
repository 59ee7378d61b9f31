#include "Schema.h"

#include "Database.h"
#include "DatabaseError.h"

#include <array>

namespace {

/// Each step leads from the version of its index to the next one. A step that has been released is
/// never changed again; changes are further steps.
constexpr std::array steps = {
    // `number` counts the cases from the newest on, so that it serves as the order "recent" and as
    // the last word in every other order. `entry` is the case as the reader gets it, without what
    // depends on the running service. The text table holds folded words only, and no copy of them.
    R"sql(
        CREATE TABLE settings (
            name TEXT PRIMARY KEY,
            value TEXT NOT NULL
        ) WITHOUT ROWID;
        CREATE TABLE archives (
            position INTEGER PRIMARY KEY,
            id TEXT NOT NULL UNIQUE,
            title TEXT NOT NULL,
            description TEXT NOT NULL,
            accent TEXT NOT NULL
        );
        CREATE TABLE cases (
            number INTEGER PRIMARY KEY,
            archive TEXT NOT NULL REFERENCES archives (id),
            id TEXT NOT NULL,
            title TEXT NOT NULL,
            summary TEXT NOT NULL,
            category TEXT NOT NULL,
            era TEXT NOT NULL,
            org TEXT NOT NULL,
            year INTEGER NOT NULL,
            significance INTEGER NOT NULL,
            entry TEXT NOT NULL,
            UNIQUE (archive, id)
        );
        CREATE INDEX cases_by_year ON cases (year);
        CREATE TABLE related_cases (
            number INTEGER NOT NULL,
            position INTEGER NOT NULL,
            archive TEXT NOT NULL,
            id TEXT NOT NULL,
            PRIMARY KEY (number, position)
        ) WITHOUT ROWID;
        CREATE VIRTUAL TABLE case_words USING fts5 (
            title, names, summary, body,
            content = '', prefix = '2 3', tokenize = 'unicode61 remove_diacritics 0'
        );
    )sql",
    // A number is never given twice, so that nothing that remembers one can mean a later account.
    // An account's email is empty where there is none.
    R"sql(
        CREATE TABLE accounts (
            number INTEGER PRIMARY KEY AUTOINCREMENT,
            id TEXT NOT NULL UNIQUE,
            handle TEXT NOT NULL,
            foldedHandle TEXT NOT NULL UNIQUE,
            email TEXT NOT NULL DEFAULT '',
            password TEXT NOT NULL
        );
        CREATE TABLE sessions (
            digest TEXT PRIMARY KEY,
            account INTEGER NOT NULL REFERENCES accounts (number) ON DELETE CASCADE
        ) WITHOUT ROWID;
        CREATE INDEX sessions_by_account ON sessions (account);
        CREATE TABLE asked_questions (
            account INTEGER PRIMARY KEY REFERENCES accounts (number) ON DELETE CASCADE,
            day INTEGER NOT NULL,
            count INTEGER NOT NULL
        );
        CREATE TABLE case_requests (
            account INTEGER NOT NULL REFERENCES accounts (number) ON DELETE CASCADE,
            archive TEXT NOT NULL,
            question TEXT NOT NULL,
            requestedAt INTEGER NOT NULL,
            PRIMARY KEY (account, archive, question)
        ) WITHOUT ROWID;
    )sql",
    // Versions count the changes of an account, so that the highest is the library's revision.
    // `base` and `writer` tell on what the last writer built. A removed item stays, without its
    // content.
    R"sql(
        CREATE TABLE library_items (
            account INTEGER NOT NULL REFERENCES accounts (number) ON DELETE CASCADE,
            kind TEXT NOT NULL,
            key TEXT NOT NULL,
            version INTEGER NOT NULL,
            base INTEGER NOT NULL,
            writer TEXT NOT NULL,
            deleted INTEGER NOT NULL,
            content TEXT NOT NULL,
            PRIMARY KEY (account, kind, key),
            UNIQUE (account, version)
        );
        CREATE TABLE library_changes (
            account INTEGER NOT NULL REFERENCES accounts (number) ON DELETE CASCADE,
            opId TEXT NOT NULL,
            preservedKey TEXT NOT NULL,
            PRIMARY KEY (account, opId)
        ) WITHOUT ROWID;
    )sql",
    // The numbers grow, so that the highest is the newest item. `archive` and `caseId` are empty
    // for a chat.
    R"sql(
        CREATE TABLE wall_items (
            number INTEGER PRIMARY KEY AUTOINCREMENT,
            account INTEGER NOT NULL REFERENCES accounts (number) ON DELETE CASCADE,
            id TEXT NOT NULL,
            archive TEXT NOT NULL,
            caseId TEXT NOT NULL,
            item TEXT NOT NULL,
            UNIQUE (account, id)
        );
        CREATE UNIQUE INDEX wall_cases ON wall_items (account, archive, caseId)
            WHERE caseId <> '';
    )sql",
    // The version that whoever made the change knows by it, -1 where that was not kept.
    R"sql(
        ALTER TABLE library_changes ADD COLUMN version INTEGER NOT NULL DEFAULT -1;
    )sql",
};

qint64 storedVersion(Database::Access &access) {
    auto query = access.prepare("PRAGMA user_version");
    query.next();
    return query.integer(0);
}

} // namespace

void Schema::migrate(Database &database) {
    Database::Access access(database);
    const auto version = storedVersion(access);
    if (version > static_cast<qint64>(steps.size()))
        throw DatabaseError("The database was made by a newer version of this service.");
    if (version == static_cast<qint64>(steps.size()))
        return;
    Database::Transaction transaction(access);
    for (auto step = static_cast<std::size_t>(version); step < steps.size(); ++step)
        access.execute(steps[step]);
    access.execute("PRAGMA user_version=" + QByteArray::number(qsizetype(steps.size())));
    transaction.commit();
}
