#pragma once

#include "local-service/src/AccountStore.h"
#include "local-service/src/Database.h"
#include "platform/Transport.h"
#include "records/Library.h"
#include "tests/simulation/Audit.h"

#include <functional>

/// The bundled service's own accounts and libraries, without HTTP between. Knows one account.
class AccountService final {
public:
    /// Each object has an account of its own in the database. `note` is told of each exchange.
    AccountService(Database &database, const QString &handle,
                   std::function<void(const QString &)> note);

    /// `known` is what the asking device knows of the service at this moment.
    HttpResponse answer(const HttpRequest &request, const std::optional<LibrarySyncState> &known);

    /// Ends a login from this side, as when the password is changed elsewhere.
    void endSession(const QByteArray &token);

    /// The account's library as the service holds it.
    LibraryReply library();

    Audit &audit() { return m_audit; }

private:
    HttpResponse login();
    HttpResponse exchange(const Session &session, const LibraryUpload &upload,
                          const std::optional<LibrarySyncState> &known);

    Database &m_database;
    AccountStore m_accounts;
    AccountStore::Credentials m_credentials;
    /// A session of the service's own, for looking.
    Session m_observer;
    Audit m_audit;
    std::function<void(const QString &)> m_note;
};
