#pragma once

#include "records/JsonFields.h"

#include <QMetaType>
#include <QString>

#include <optional>

/// The signed-in person.
struct AppUser {
    Q_GADGET
    Q_PROPERTY(QString handle MEMBER handle FINAL)
    Q_PROPERTY(QString email READ emailText FINAL)
    Q_PROPERTY(bool verified READ isVerified FINAL)
    Q_PROPERTY(bool verificationKnown READ isVerificationKnown FINAL)

public:
    /// Part of the library key.
    QString id;
    /// The name shown and used to log in.
    QString handle;
    std::optional<QString> email;
    /// Whether the email is; absent where the service does not say.
    std::optional<bool> verified;

    /// Empty without one.
    QString emailText() const { return email.value_or(QString()); }
    bool isVerified() const { return verified == true; }
    bool isVerificationKnown() const { return verified.has_value(); }

    bool operator==(const AppUser &) const = default;
};

/// The state of an account.
struct Account {
    Q_GADGET
    Q_PROPERTY(AppUser user MEMBER user FINAL)
    Q_PROPERTY(QString plan MEMBER plan FINAL)
    Q_PROPERTY(bool apple READ isApple FINAL)

public:
    AppUser user;
    /// As the service names it.
    QString plan;
    std::optional<QString> subscription;
    std::optional<qint64> planExpiresAt;
    std::optional<bool> apple;

    bool isApple() const { return apple == true; }

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
    Q_GADGET
    Q_PROPERTY(QString plan MEMBER plan FINAL)
    Q_PROPERTY(double used READ usedForQml FINAL)
    Q_PROPERTY(double limit READ limitForQml FINAL)

public:
    QString plan;
    qint64 used = 0;
    qint64 limit = 0;

    double usedForQml() const { return static_cast<double>(used); }
    double limitForQml() const { return static_cast<double>(limit); }

    bool operator==(const Quota &) const = default;
};

/// The reply of a request that only had to be taken. Nobody looks at `ok`; the status tells.
struct Acknowledgement {
    std::optional<bool> ok;
};

/// The reply to a wish for another mail that confirms the address.
struct VerificationReply {
    std::optional<bool> verificationSent;
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

template <>
struct JsonFields<Acknowledgement> {
    static constexpr auto table = std::make_tuple(jsonField("ok", &Acknowledgement::ok));
};

template <>
struct JsonFields<VerificationReply> {
    static constexpr auto table =
        std::make_tuple(jsonField("verificationSent", &VerificationReply::verificationSent));
};
