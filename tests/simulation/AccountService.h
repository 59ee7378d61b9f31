#pragma once

#include "local-service/src/AccountStore.h"
#include "local-service/src/Database.h"
#include "platform/Transport.h"
#include "records/Library.h"

#include <QSet>

/// The bundled service's own accounts and libraries, without HTTP between. Knows one account.
class AccountService final {
public:
    /// `directory` holds the database; each object has an account of its own in it.
    AccountService(Database &database, QString handle);

    HttpResponse answer(const HttpRequest &request);

    /// The account's library as the service holds it.
    LibraryReply library();

    /// Texts that the service kept beside another one, and how often a change met a newer version
    /// with another content.
    int preservedCopies() const { return static_cast<int>(m_preserved.size()); }
    int conflicts() const { return m_conflicts; }

private:
    HttpResponse login();
    HttpResponse exchange(const Session &session, const LibraryUpload &upload);
    void countConflicts(const LibraryUpload &upload);

    Database &m_database;
    AccountStore m_accounts;
    AccountStore::Credentials m_credentials;
    /// A session of the service's own, for looking.
    Session m_observer;
    QSet<QString> m_taken;
    QSet<QString> m_preserved;
    int m_conflicts = 0;
};
