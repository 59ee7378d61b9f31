#include "AccountRoutes.h"

#include "CaseRequests.h"
#include "Handles.h"
#include "Passwords.h"
#include "QuestionQuota.h"
#include "Router.h"
#include "SignIn.h"

#include "records/ArchiveStyle.h"
#include "records/JsonDecoder.h"
#include "records/JsonEncoder.h"

#include <algorithm>

namespace {

struct LoginRequest {
    QString handle;
    QString password;
};

/// What an action needs is looked for by that action.
struct ProfileRequest {
    QString action;
    std::optional<QString> handle;
    std::optional<QString> email;
    std::optional<QString> password;
    std::optional<QString> oldPassword;
    std::optional<QString> newPassword;
};

struct ProfileReply {
    bool ok = true;
    std::optional<bool> verificationSent;
};

struct CasesRequest {
    QString archive;
    QString question;
};

struct CasesReply {
    bool queued = false;
    std::optional<bool> duplicate;
};

} // namespace

template <>
struct JsonFields<LoginRequest> {
    static constexpr auto table = std::make_tuple(jsonField("handle", &LoginRequest::handle),
                                                  jsonField("password", &LoginRequest::password));
};

template <>
struct JsonFields<ProfileRequest> {
    static constexpr auto table = std::make_tuple(jsonField("action", &ProfileRequest::action),
                                                  jsonField("handle", &ProfileRequest::handle),
                                                  jsonField("email", &ProfileRequest::email),
                                                  jsonField("password", &ProfileRequest::password),
                                                  jsonField("old", &ProfileRequest::oldPassword),
                                                  jsonField("new", &ProfileRequest::newPassword));
};

template <>
struct JsonFields<ProfileReply> {
    static constexpr auto table =
        std::make_tuple(jsonField("ok", &ProfileReply::ok),
                        jsonField("verificationSent", &ProfileReply::verificationSent));
};

template <>
struct JsonFields<CasesRequest> {
    static constexpr auto table = std::make_tuple(jsonField("archive", &CasesRequest::archive),
                                                  jsonField("question", &CasesRequest::question));
};

template <>
struct JsonFields<CasesReply> {
    static constexpr auto table = std::make_tuple(jsonField("queued", &CasesReply::queued),
                                                  jsonField("duplicate", &CasesReply::duplicate));
};

namespace {

constexpr qsizetype longestEmail = 254;
constexpr qsizetype longestQuestion = 10'000;

const QString &required(const std::optional<QString> &value, const char *name) {
    if (!value)
        throw RequestError::badParameter(QLatin1String(name), QStringLiteral("present"));
    return *value;
}

/// Whether the text has the shape of an address. Only a mail could show more, and none is sent.
bool looksLikeEmail(const QString &text) {
    const auto at = text.indexOf(QLatin1Char('@'));
    return at > 0 && at == text.lastIndexOf(QLatin1Char('@')) && at < text.size() - 1 &&
           text.size() <= longestEmail && std::all_of(text.begin(), text.end(), [](QChar letter) {
               return letter.isPrint() && !letter.isSpace();
           });
}

class ProfileActions final {
public:
    ProfileActions(Database &database, SignIn &signIn) : m_accounts(database), m_signIn(signIn) {}

    ProfileReply run(const Session &session, const ProfileRequest &request) {
        if (request.action == QLatin1String("rename"))
            return rename(session, request);
        if (request.action == QLatin1String("email"))
            return setEmail(session, request);
        if (request.action == QLatin1String("password"))
            return setPassword(session, request);
        if (request.action == QLatin1String("delete"))
            return remove(session, request);
        throw RequestError::badParameter(QStringLiteral("action"),
                                         QStringLiteral("rename, email, password or delete"));
    }

private:
    ProfileReply rename(const Session &session, const ProfileRequest &request) {
        const auto name = Handles::accepted(required(request.handle, "handle"));
        if (!m_accounts.rename(session.number, name))
            throw Handles::taken();
        return {};
    }

    ProfileReply setEmail(const Session &session, const ProfileRequest &request) {
        const auto email = required(request.email, "email").trimmed();
        if (!looksLikeEmail(email))
            throw RequestError(400, QStringLiteral("bad_email"),
                               QStringLiteral("This is not an email address."));
        m_accounts.setEmail(session.number, email);
        return {true, false};
    }

    ProfileReply setPassword(const Session &session, const ProfileRequest &request) {
        const auto &chosen = required(request.newPassword, "new");
        SignIn::checkNew(chosen);
        const auto old = confirm(session, required(request.oldPassword, "old"));
        if (!m_accounts.setPassword(old, Passwords::hash(chosen), session.tokenDigest))
            throw wrongPassword();
        return {};
    }

    ProfileReply remove(const Session &session, const ProfileRequest &request) {
        if (!m_accounts.remove(confirm(session, required(request.password, "password"))))
            throw wrongPassword();
        return {};
    }

    /// A token alone must not be enough to take an account away from its owner.
    AccountStore::Credentials confirm(const Session &session, const QString &password) {
        const auto verified = m_signIn.verify(session.account.user.handle, password);
        if (!verified || verified->number != session.number)
            throw wrongPassword();
        return *verified;
    }

    /// Not 401: the session itself is as good as before.
    static RequestError wrongPassword() {
        return {403, QStringLiteral("wrong_password"),
                QStringLiteral("The password is not right.")};
    }

    AccountStore m_accounts;
    SignIn &m_signIn;
};

CasesReply requestCases(Database &database, const Session &session, const CasesRequest &request,
                        qint64 now) {
    const auto question = request.question.trimmed();
    if (!ArchiveStyle::ids().contains(request.archive))
        throw RequestError::badParameter(QStringLiteral("archive"),
                                         QStringLiteral("the id of an archive"));
    if (question.isEmpty() || question.size() > longestQuestion)
        throw RequestError::badParameter(
            QStringLiteral("question"),
            QStringLiteral("a text of at most %1 characters").arg(longestQuestion));
    if (CaseRequests::add(database, session.number, request.archive, question, now))
        return {true, std::nullopt};
    return {false, true};
}

} // namespace

void AccountRoutes::add(Router &router, Database &database, SignIn &signIn, const Clock &clock) {
    const AccountStore accounts(database);
    router.add("POST", QStringLiteral("/v1/account/login"), [&signIn](Call &call) {
        const auto request = call.body<LoginRequest>();
        call.reply(signIn.open(signIn.require(request.handle, request.password)));
    });
    router.add("POST", QStringLiteral("/v1/account/logout"), [accounts](Call &call) {
        accounts.closeSession(accounts.requireSession(call).tokenDigest);
        call.reply(ProfileReply{});
    });
    router.add("GET", QStringLiteral("/v1/account/me"),
               [accounts](Call &call) { call.reply(accounts.requireSession(call).account); });
    router.add("POST", QStringLiteral("/v1/account/profile"),
               [accounts, &database, &signIn](Call &call) {
                   const auto session = accounts.requireSession(call);
                   const auto request = call.body<ProfileRequest>();
                   call.reply(ProfileActions(database, signIn).run(session, request));
               });
    router.add("GET", QStringLiteral("/v1/account/quota"),
               [accounts, &database, clock](Call &call) {
                   const auto session = accounts.requireSession(call);
                   call.reply(QuestionQuota::read(database, session, clock()));
               });
    router.add("POST", QStringLiteral("/v1/account/request-cases"),
               [accounts, &database, clock](Call &call) {
                   const auto session = accounts.requireSession(call);
                   const auto request = call.body<CasesRequest>();
                   call.reply(requestCases(database, session, request, clock()));
               });
    router.add("POST", QStringLiteral("/v1/account/web-session"), [accounts](Call &call) {
        accounts.requireSession(call);
        throw RequestError(403, QStringLiteral("no_memberships"),
                           QStringLiteral("The local service sells no memberships."));
    });
}
