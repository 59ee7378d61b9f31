#include "QuestionQuota.h"

#include "Database.h"

namespace {

constexpr qint64 millisecondsPerDay = 24LL * 60 * 60 * 1000;

qint64 questionsAsked(Database &database, qint64 account, qint64 now) {
    Database::Access access(database);
    auto query = access.prepare("SELECT count FROM asked_questions WHERE account = ? AND day = ?");
    query.bind(account).bind(now / millisecondsPerDay);
    return query.next() ? query.integer(0) : 0;
}

} // namespace

Quota QuestionQuota::read(Database &database, const Session &session, qint64 now) {
    return {session.account.plan, questionsAsked(database, session.number, now), questionsPerDay};
}

bool QuestionQuota::recordQuestion(Database &database, qint64 account, qint64 now) {
    Database::Access access(database);
    auto count =
        access.prepare("INSERT INTO asked_questions (account, day, count) VALUES (?1, ?2, 1)"
                       " ON CONFLICT (account) DO UPDATE SET day = excluded.day,"
                       " count = CASE WHEN day = excluded.day THEN count + 1 ELSE 1 END"
                       " WHERE day <> excluded.day OR count < ?3 RETURNING 1");
    return count.bind(account).bind(now / millisecondsPerDay).bind(questionsPerDay).run();
}

void QuestionQuota::forgetQuestion(Database &database, qint64 account, qint64 now) {
    Database::Access access(database);
    auto count = access.prepare("UPDATE asked_questions SET count = count - 1"
                                " WHERE account = ? AND day = ? AND count > 0");
    count.bind(account).bind(now / millisecondsPerDay).run();
}
