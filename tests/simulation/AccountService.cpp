#include "tests/simulation/AccountService.h"

#include "local-service/src/LibraryStore.h"
#include "local-service/src/Secrets.h"
#include "local-service/src/Session.h"
#include "records/Json.h"
#include "service/Endpoints.h"

namespace {

HttpResponse refused() {
    return {401, R"({"error":"signin_required"})"};
}

/// An exchange in a line: what was changed on which base, and what became of it.
QString textOf(const LibraryUpload &upload, const LibraryReply &reply) {
    QString text = QStringLiteral("exchange:");
    for (const auto &change : upload.changes) {
        text += change.deleted ? QStringLiteral(" -") : QStringLiteral(" ");
        text += change.conversation ? change.key.left(4) + u' ' + change.conversation->title
                                    : change.key.left(10);
        text += QStringLiteral(" on %1,").arg(change.baseVersion);
    }
    for (const auto &conflict : reply.conflicts.value_or(QList<LibraryConflict>()))
        text += QStringLiteral(" %1 kept as %2,")
                    .arg(conflict.originalKey.left(4), conflict.preservedKey.left(4));
    return text + QStringLiteral(" now %1").arg(reply.revision);
}

QByteArray tokenOf(const HttpRequest &request) {
    for (const auto &[name, value] : request.headers) {
        if (name == "Authorization")
            return value.mid(static_cast<int>(sizeof "Bearer " - 1));
    }
    return {};
}

QByteArray answerText() {
    return R"({"type":"delta","text":"An "})"
           "\n"
           R"({"type":"delta","text":"answer."})"
           "\n"
           R"({"type":"done"})";
}

} // namespace

AccountService::AccountService(Database &database, const QString &handle,
                               std::function<void(const QString &)> note)
    : m_database(database),
      m_accounts(database),
      m_credentials(m_accounts.add(handle, "hash").value()),
      m_note(std::move(note)) {
    const auto token = "app_" + Secrets::make().toUtf8();
    m_accounts.openSession(m_credentials, Secrets::digest(token));
    m_observer = m_accounts.session(token).value();
}

HttpResponse AccountService::login() {
    const auto token = "app_" + Secrets::make().toUtf8();
    m_accounts.openSession(m_credentials, Secrets::digest(token));
    Login login;
    login.token = QString::fromUtf8(token);
    login.user = m_accounts.session(token)->account.user;
    return {200, Json::encode(login)};
}

HttpResponse AccountService::answer(const HttpRequest &request,
                                    const std::optional<LibrarySyncState> &known) {
    const auto path = request.url.path().mid(1);
    if (path == Endpoint::health)
        return {200, Json::encode(Health{true, {}, {}, {}, 0})};
    if (path == Endpoint::archives || path == Endpoint::wall)
        return {200, R"({"items":[]})"};
    if (path == Endpoint::login)
        return login();

    const auto session = m_accounts.session(tokenOf(request));
    if (!session)
        return refused();
    if (path == Endpoint::logout) {
        m_accounts.closeSession(session->tokenDigest);
        return {200, "{}"};
    }
    if (path == Endpoint::me)
        return {200, Json::encode(session->account)};
    if (path == Endpoint::quota)
        return {200, R"({"plan":"free","used":1,"limit":50})"};
    if (path == Endpoint::chatRuns)
        return {200, answerText()};
    if (path == Endpoint::library)
        return exchange(*session, Json::decode<LibraryUpload>(*request.body), known);
    return {404, R"({"error":"not_found"})"};
}

HttpResponse AccountService::exchange(const Session &session, const LibraryUpload &upload,
                                      const std::optional<LibrarySyncState> &known) {
    const auto reply = LibraryStore::exchange(m_database, session, upload.changes);
    m_audit.exchanged(session.tokenDigest, upload, reply, known);
    m_note(textOf(upload, reply));
    return {200, Json::encode(reply)};
}

LibraryReply AccountService::library() {
    return LibraryStore::exchange(m_database, m_observer, {});
}

void AccountService::endSession(const QByteArray &token) {
    if (const auto session = m_accounts.session(token))
        m_accounts.closeSession(session->tokenDigest);
}
