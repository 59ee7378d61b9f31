#include "AttemptLimit.h"
#include "Database.h"
#include "QuestionQuota.h"
#include "RunningService.h"

#include "records/Library.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

namespace {

constexpr auto login = "/v1/account/login";
constexpr auto profile = "/v1/account/profile";
constexpr auto me = "/v1/account/me";

QByteArray credentials(const std::string &handle, const std::string &password) {
    return QByteArray::fromStdString(R"({"handle":")" + handle + R"(","password":")" + password +
                                     R"(","device":"Quillmere for Mac"})");
}

TEST(Account, BeginsAndEndsSessions) {
    RunningService running;
    const auto first = running.join("Ada");
    EXPECT_TRUE(
        QRegularExpression(QStringLiteral("^app_[0-9a-f]{64}$")).match(first.token).hasMatch())
        << first.token.toStdString();
    EXPECT_EQ(first.user.handle, QStringLiteral("Ada"));
    EXPECT_FALSE(first.user.id.isEmpty());
    EXPECT_FALSE(first.user.email);
    EXPECT_FALSE(first.user.verified);
    EXPECT_EQ(first.plan, QStringLiteral("free"));

    const auto second =
        running.ask<Login>(login, credentials(" ADA ", RunningService::password), {});
    EXPECT_NE(first.token, second.token);
    EXPECT_EQ(running.ask<Account>(me, {}, second.token), first.account());

    EXPECT_EQ(running.ask("/v1/account/logout", "{}", first.token).status, 200);
    EXPECT_EQ(running.ask(me, {}, first.token).status, 401);
    const auto mine = running.ask(me, {}, second.token);
    EXPECT_EQ(mine.status, 200);
    EXPECT_EQ(mine.get_header_value("Cache-Control"), "no-store");
}

TEST(Account, IsAskedForByEveryRequestThatNeedsOne) {
    RunningService running;
    running.join("Ada");
    const std::pair<const char *, QByteArray> requests[] = {
        {me, {}},
        {"/v1/account/quota", {}},
        {"/v1/account/logout", "{}"},
        {profile, R"({"action":"rename","handle":"Eve"})"},
        {"/v1/account/request-cases", R"({"archive":"foible","question":"Why?"})"},
        {"/v1/account/web-session", R"({"lang":"en","plan":"monthly"})"},
    };
    for (const auto &[address, body] : requests) {
        for (const auto &token :
             {QString(), QStringLiteral("app_"), QStringLiteral("app_%1").arg(0, 64)}) {
            const auto response = running.ask(address, body, token);
            EXPECT_EQ(response.status, 401) << address;
            EXPECT_EQ(response.body.find(R"({"error":"signin_required","message":")"), 0u);
        }
    }
}

TEST(Account, DoesNotTellWhetherANameExists) {
    RunningService running;
    running.registerAccount("Ada");
    const auto wrong = running.ask(login, credentials("Ada", "wrong horse"));
    const auto unknown = running.ask(login, credentials("Bob", "wrong horse"));
    EXPECT_EQ(wrong.status, 401);
    EXPECT_EQ(unknown.status, 401);
    EXPECT_EQ(wrong.body, unknown.body);
    EXPECT_EQ(running.ask(login, R"({"handle":"Ada"})").status, 400);

    // No account has so long a name, and the service keeps no count of such.
    const std::string endless(1000, 'a');
    for (int count = 0; count <= AttemptLimit::greatestCount; ++count)
        EXPECT_EQ(running.ask(login, credentials(endless, "wrong horse")).body, wrong.body);

    // The first attempts of each have failed above.
    for (const char *name : {"Ada", "Bob"}) {
        for (int count = 1; count < AttemptLimit::greatestCount; ++count)
            EXPECT_EQ(running.ask(login, credentials(name, "wrong horse")).status, 401);
        running.now += 61'000;
        const auto refused = running.ask(login, credentials(name, RunningService::password));
        EXPECT_EQ(refused.status, 429) << name;
        EXPECT_EQ(refused.get_header_value("Retry-After").size(), 3u);
        EXPECT_NE(refused.body.find("Try again in "), std::string::npos) << refused.body;
    }
    running.now += AttemptLimit::window.count();
    EXPECT_EQ(running.ask(login, credentials("Ada", RunningService::password)).status, 200);
}

TEST(Account, ChangesItsProfile) {
    RunningService running;
    const auto ada = running.join("Ada");
    running.registerAccount("Bob");
    struct Change {
        QByteArray body;
        int status;
        std::string reply;
    };
    const Change changes[] = {
        {R"({"action":"rename","handle":"bob"})", 409, "name_taken"},
        {R"({"action":"rename","handle":" "})", 400, "bad_name"},
        {R"({"action":"rename"})", 400, "\\\"handle\\\""},
        {R"({"action":"rename","handle":"ADA "})", 200, R"({"ok":true})"},
        {R"({"action":"email","email":"ada"})", 400, "bad_email"},
        {R"({"action":"email","email":"a@b@c"})", 400, "bad_email"},
        {R"({"action":"email","email":"ada@example.org\nBcc: x"})", 400, "bad_email"},
        {R"({"action":"email","email":"ada@example.org"})", 200,
         R"({"ok":true,"verificationSent":false})"},
        {R"({"action":"password","old":"correct horse","new":"short"})", 400, "bad_password"},
        {R"({"action":"password","old":"wrong","new":"battery staple"})", 403, "wrong_password"},
        {R"({"action":"delete","password":"wrong"})", 403, "wrong_password"},
        {R"({"action":"promote"})", 400, "\\\"action\\\""},
        {R"({"handle":"Eve"})", 400, "\\\"action\\\""},
        {"[]", 400, "bad_request"},
    };
    for (const auto &change : changes) {
        const auto response = running.ask(profile, change.body, ada.token);
        EXPECT_EQ(response.status, change.status) << change.body.toStdString();
        EXPECT_NE(response.body.find(change.reply), std::string::npos) << response.body;
    }
    const auto account = running.ask<Account>(me, {}, ada.token);
    EXPECT_EQ(account.user.id, ada.user.id);
    EXPECT_EQ(account.user.handle, QStringLiteral("ADA"));
    EXPECT_EQ(account.user.email, QStringLiteral("ada@example.org"));
    EXPECT_EQ(account.user.verified, false);
}

TEST(Account, EndsTheOtherSessionsWithItsOldPassword) {
    RunningService running;
    const auto here = running.join("Ada");
    const auto there = running.ask<Login>(login, credentials("Ada", RunningService::password), {});
    const auto bob = running.join("Bob");
    EXPECT_EQ(running
                  .ask(profile,
                       R"({"action":"password","old":"correct horse","new":"battery staple"})",
                       here.token)
                  .status,
              200);
    EXPECT_EQ(running.ask(me, {}, here.token).status, 200);
    EXPECT_EQ(running.ask(me, {}, there.token).status, 401);
    EXPECT_EQ(running.ask(me, {}, bob.token).status, 200);
    EXPECT_EQ(running.ask(login, credentials("Ada", RunningService::password)).status, 401);
    EXPECT_EQ(running.ask(login, credentials("Ada", "battery staple")).status, 200);
}

TEST(Account, TakesEverythingWithIt) {
    RunningService running;
    const auto ada = running.join("Ada");
    const QByteArray request = R"({"archive":"foible","question":"Why?"})";
    running.ask("/v1/account/request-cases", request, ada.token);
    LibraryChange change;
    change.kind = QStringLiteral("saved");
    change.key = change.card.emplace().key = QStringLiteral("foible:quay");
    running.ask("/v1/library", Json::encode(LibraryUpload{{change}}), ada.token);
    running.ask("/v1/wall/case", R"({"archive":"foible","id":"quay"})", ada.token);
    Database database(running.home());
    QuestionQuota::recordQuestion(database, 1, running.now);
    const auto rows = [&] {
        qint64 count = 0;
        Database::Access access(database);
        for (const char *table : {"accounts", "sessions", "asked_questions", "case_requests",
                                  "library_items", "library_changes", "wall_items"}) {
            auto query = access.prepare(QByteArray("SELECT count(*) FROM ") + table);
            query.next();
            count += query.integer(0);
        }
        return count;
    };
    EXPECT_EQ(rows(), 7);
    EXPECT_EQ(
        running.ask(profile, R"({"action":"delete","password":"correct horse"})", ada.token).status,
        200);
    EXPECT_EQ(rows(), 0);
    EXPECT_EQ(running.ask(me, {}, ada.token).status, 401);

    // The name is free again, and belongs to somebody else.
    const auto other = running.join("Ada");
    EXPECT_NE(other.user.id, ada.user.id);
}

TEST(Account, AsksAnArchiveOnce) {
    RunningService running;
    const auto ada = running.join("Ada");
    const auto bob = running.join("Bob");
    struct Request {
        const Login &login;
        QByteArray body;
        int status;
        std::string reply;
    };
    const Request requests[] = {
        {ada, R"({"archive":"foible","question":"Why?"})", 200, R"({"queued":true})"},
        {ada, R"({"archive":"foible","question":" Why? "})", 200,
         R"({"queued":false,"duplicate":true})"},
        {ada, R"({"archive":"lumen","question":"Why?"})", 200, R"({"queued":true})"},
        {bob, R"({"archive":"foible","question":"Why?"})", 200, R"({"queued":true})"},
        {bob, R"({"archive":"unheard","question":"Why?"})", 400, "\\\"archive\\\""},
        {bob, R"({"archive":"foible","question":" "})", 400, "\\\"question\\\""},
    };
    for (const auto &request : requests) {
        const auto response =
            running.ask("/v1/account/request-cases", request.body, request.login.token);
        EXPECT_EQ(response.status, request.status) << request.body.toStdString();
        EXPECT_NE(response.body.find(request.reply), std::string::npos) << response.body;
    }
    const auto sold =
        running.ask("/v1/account/web-session", R"({"lang":"en","plan":"yearly"})", ada.token);
    EXPECT_EQ(sold.status, 403);
    EXPECT_NE(sold.body.find("sells no memberships"), std::string::npos);
}

TEST(Account, NeverShowsItsSecrets) {
    testing::internal::CaptureStderr();
    RunningService running;
    const auto ada = running.join("Ada");
    running.ask(me, {}, ada.token);
    running.ask(login, credentials("Ada", "wrong horse"));
    running.get("/v1/search?q=heartache");
    running.get("/google/native/start?client=macos&state=heartache");
    running.service.stop();
    const auto log = testing::internal::GetCapturedStderr();
    for (const char *line :
         {"POST /v1/account/login 200", "GET /v1/search 200", "GET /google/native/start 400"})
        EXPECT_NE(log.find(line), std::string::npos) << log;
    for (const auto &secret : {ada.token.toStdString(), std::string("heartache"),
                               std::string("horse"), std::string("Ada")})
        EXPECT_EQ(log.find(secret), std::string::npos) << log;

    Database database(running.home());
    Database::Access access(database);
    auto session = access.prepare("SELECT digest FROM sessions");
    ASSERT_TRUE(session.next());
    EXPECT_FALSE(session.text(0).contains(ada.token.mid(4)));
    auto account = access.prepare("SELECT password FROM accounts");
    ASSERT_TRUE(account.next());
    EXPECT_TRUE(account.text(0).startsWith(QStringLiteral("$argon2id$")));
}

} // namespace
