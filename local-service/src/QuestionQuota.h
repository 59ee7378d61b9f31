#pragma once

#include "Session.h"

#include "records/Account.h"

class Database;

/// How many questions an account may ask. The count begins anew at every midnight UTC; `now` is in
/// milliseconds since 1970.
namespace QuestionQuota {

inline constexpr qint64 questionsPerDay = 50;

Quota read(Database &database, const Session &session, qint64 now);

/// Counts a question of the account with a Session's number, here and below; false when none is
/// left, and then nothing is counted.
bool recordQuestion(Database &database, qint64 account, qint64 now);

/// Takes back what was recorded at `now`.
void forgetQuestion(Database &database, qint64 account, qint64 now);

} // namespace QuestionQuota
