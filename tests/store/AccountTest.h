#pragma once

#include "platform/CancellationError.h"
#include "service/Endpoints.h"
#include "tests/store/StoreTest.h"

/// A store whose service answers about accounts when the test says so, and about everything else by
/// itself.
class AccountTest : public StoreTest {
protected:
    AccountTest();

    static QString path(QLatin1String endpoint) { return QLatin1Char('/') + endpoint; }
    static QByteArray accountBody(const QString &user,
                                  const QString &plan = QStringLiteral("free"));
    static QByteArray loginBody(const QString &user);
    static QByteArray tokenOf(const QString &user) { return "app_" + user.toUtf8(); }

    void answer(QLatin1String endpoint, int status, const QByteArray &body) {
        system.transport.answer(path(endpoint), status, body);
    }
    qsizetype waiting(QLatin1String endpoint) { return system.transport.waiting(path(endpoint)); }
    /// How many requests there were.
    qsizetype sent(QLatin1String endpoint) const;

    /// The token kept for the server; null without one.
    QByteArray token(const QString &server);
    QString user() const { return store.accountRecord().user.id; }

    void signIn(const QString &user);
    /// As an earlier run of the program left it.
    void leaveLogin(const QString &server, const QString &user, bool withProfile = true);

    /// The words of what the task throws; empty when it does not, "cancelled" for a cancellation.
    template <class Result>
    QString failureOf(Task<Result> task) {
        try {
            await(std::move(task));
            return {};
        } catch (const CancellationError &) {
            return QStringLiteral("cancelled");
        } catch (...) {
            return store.describe(std::current_exception());
        }
    }

    const QString home = store.baseString();
    const QString away = QStringLiteral("https://away.example");
};
