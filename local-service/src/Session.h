#pragma once

#include "records/Account.h"

#include <QByteArray>

/// A signed-in account, as a request's token names it.
struct Session {
    /// The account's number in the database.
    qint64 number = 0;
    Account account;
    /// The stored form of the token itself.
    QByteArray tokenDigest;
};
