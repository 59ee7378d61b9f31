#pragma once

#include "records/JsonFields.h"

#include <QMetaType>
#include <QString>

#include <optional>

/// The signed-in person.
struct AppUser {
    /// Part of the library key.
    QString id;
    /// The name shown and used to log in.
    QString handle;
    std::optional<QString> email;
    std::optional<bool> verified;

    bool operator==(const AppUser &) const = default;
};

/// The state of an account.
struct Account {
    AppUser user;
    /// As the service names it.
    QString plan;
    std::optional<QString> subscription;
    std::optional<qint64> planExpiresAt;
    std::optional<bool> apple;

    bool operator==(const Account &) const = default;
};

/// The reply of a login.
struct Login {
    QString token;
    AppUser user;
    QString plan;
    std::optional<QString> subscription;
    std::optional<qint64> planExpiresAt;
    std::optional<bool> apple;

    Account account() const { return {user, plan, subscription, planExpiresAt, apple}; }
};

/// The questions that a plan allows. The plan "pro" has no limit, whatever `limit` says.
struct Quota {
    QString plan;
    qint64 used = 0;
    qint64 limit = 0;

    bool operator==(const Quota &) const = default;
};

template <>
struct JsonFields<AppUser> {
    static constexpr auto table = std::make_tuple(
        jsonField("id", &AppUser::id), jsonField("handle", &AppUser::handle),
        jsonField("email", &AppUser::email), jsonField("verified", &AppUser::verified));
};

template <>
struct JsonFields<Account> {
    static constexpr auto table = std::make_tuple(
        jsonField("user", &Account::user), jsonField("plan", &Account::plan),
        jsonField("subscription", &Account::subscription),
        jsonField("planExpiresAt", &Account::planExpiresAt), jsonField("apple", &Account::apple));
};

template <>
struct JsonFields<Login> {
    static constexpr auto table = std::make_tuple(
        jsonField("token", &Login::token), jsonField("user", &Login::user),
        jsonField("plan", &Login::plan), jsonField("subscription", &Login::subscription),
        jsonField("planExpiresAt", &Login::planExpiresAt), jsonField("apple", &Login::apple));
};

template <>
struct JsonFields<Quota> {
    static constexpr auto table =
        std::make_tuple(jsonField("plan", &Quota::plan), jsonField("used", &Quota::used),
                        jsonField("limit", &Quota::limit));
};
