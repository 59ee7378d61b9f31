#include "AttemptLimit.h"
#include "RunningService.h"
#include "SignInCodes.h"

#include <gtest/gtest.h>

#include <QCryptographicHash>
#include <QUrl>
#include <QUrlQuery>

namespace {

constexpr auto verifier = "0123456789012345678901234567890123456789012";
constexpr auto otherVerifier = "9123456789012345678901234567890123456789012";

std::string challenge() {
    return QCryptographicHash::hash(verifier, QCryptographicHash::Sha256)
        .toBase64(QByteArray::Base64UrlEncoding | QByteArray::OmitTrailingEquals)
        .toStdString();
}

httplib::Params attempt() {
    return {{"client", "macos"},
            {"code_challenge", challenge()},
            {"code_challenge_method", "S256"},
            {"state", "some_state-1"},
            {"lang", "en"}};
}

bool holds(const httplib::Response &response, const std::string &text) {
    return response.body.find(text) != std::string::npos;
}

class BrowserSignIn : public testing::Test {
protected:
    httplib::Response start(const httplib::Params &query) {
        return running.get(httplib::append_query_params("/google/native/start", query));
    }

    httplib::Response choose(const std::string &choice, const std::string &handle,
                             const std::string &password = RunningService::password) {
        auto form = attempt();
        form.insert({{"choice", choice}, {"handle", handle}, {"password", password}});
        auto result = running.client().Post("/google/native/start", form);
        EXPECT_TRUE(result);
        return *result;
    }

    /// Where a choice leads: the items of the program's address.
    static QUrlQuery target(const httplib::Response &response) {
        EXPECT_EQ(response.status, 303) << response.body;
        const QUrl url(QString::fromStdString(response.get_header_value("Location")));
        EXPECT_EQ(url.toString(QUrl::RemoveQuery), QStringLiteral("quillmere-mac://auth/google"));
        QUrlQuery query(url);
        EXPECT_EQ(query.queryItems().size(), 2);
        EXPECT_EQ(query.queryItemValue(QStringLiteral("state")), QStringLiteral("some_state-1"));
        return query;
    }

    QString code(const httplib::Response &response) {
        return target(response).queryItemValue(QStringLiteral("code"));
    }

    httplib::Response trade(const QString &code, const char *secret = verifier,
                            const char *client = "macos") {
        return running.ask("/google/native/token", QByteArray(R"({"client":")") + client +
                                                       R"(","code":")" + code.toUtf8() +
                                                       R"(","code_verifier":")" + secret + R"("})");
    }

    RunningService running;
};

TEST_F(BrowserSignIn, ShowsWhatItIs) {
    auto page = start(attempt());
    EXPECT_EQ(page.status, 200);
    EXPECT_TRUE(holds(page, "stands in for the sign-in with Google"));
    EXPECT_TRUE(holds(page, "name=\"state\" value=\"some_state-1\""));
    EXPECT_NE(
        page.get_header_value("Content-Security-Policy").find("form-action 'self' quillmere-mac:;"),
        std::string::npos);
    auto query = attempt();
    query.erase("lang");
    query.insert({"lang", "zh-Hant"});
    EXPECT_TRUE(holds(start(query), "用来代替 Google 登录"));

    const std::tuple<const char *, const char *> refused[] = {
        {"client", "other"},         {"client", ""},         {"code_challenge_method", "plain"},
        {"code_challenge", "short"}, {"code_challenge", ""}, {"state", ""},
        {"state", "\"><b>"},
    };
    for (const auto &[name, value] : refused) {
        auto changed = attempt();
        changed.erase(name);
        changed.insert({name, value});
        page = start(changed);
        EXPECT_EQ(page.status, 400) << name;
        EXPECT_TRUE(holds(page, std::string("\\\"") + name + "\\\"")) << page.body;
        const auto result = running.client().Post("/google/native/start", changed);
        EXPECT_EQ(result->status, 400);
    }
}

TEST_F(BrowserSignIn, EndsInALoginOrIsDeclined) {
    EXPECT_EQ(target(choose("decline", "")).queryItemValue(QStringLiteral("error")),
              QStringLiteral("access_denied"));

    Login logins[2];
    for (int at = 0; at < 2; ++at) {
        const auto issued = code(at == 0 ? choose("create", "Ada") : choose("sign-in", "ada"));
        EXPECT_EQ(issued.size(), 64);
        logins[at] = Json::decode<Login>(QByteArray::fromStdString(trade(issued).body));
    }
    EXPECT_EQ(logins[1].user, logins[0].user);
    EXPECT_EQ(running.ask<Account>("/v1/account/me", {}, logins[0].token), logins[1].account());

    const std::tuple<const char *, const char *, const char *, int, const char *> problems[] = {
        {"create", "ada", RunningService::password, 409, "This name is taken."},
        {"create", "bob", "short", 400, "at least 8 characters"},
        {"sign-in", "ada", "wrong horse", 401, "The name or the password is not right."},
        {"sign-in", "<bob>", "wrong horse", 401, "value=\"&lt;bob&gt;\""},
    };
    for (const auto &[choice, handle, password, status, text] : problems) {
        const auto page = choose(choice, handle, password);
        EXPECT_EQ(page.status, status);
        EXPECT_TRUE(holds(page, text)) << page.body;
        EXPECT_TRUE(holds(page, "role=\"alert\""));
        EXPECT_FALSE(page.has_header("Location"));
    }
    for (int count = 1; count < AttemptLimit::greatestCount; ++count)
        choose("sign-in", "ada", "wrong horse");
    const auto page = choose("sign-in", "ada");
    EXPECT_EQ(page.status, 429);
    EXPECT_EQ(page.get_header_value("Retry-After"), "300");
}

TEST_F(BrowserSignIn, GivesACodeForOneUseByItsOwner) {
    running.registerAccount("Ada");
    const auto fresh = [&] { return code(choose("sign-in", "Ada")); };
    const auto refuse = [](const httplib::Response &response) {
        EXPECT_EQ(response.status, 400);
        EXPECT_EQ(response.body.find(R"({"error":"bad_code")"), 0u) << response.body;
    };

    auto issued = fresh();
    EXPECT_EQ(trade(issued).status, 200);
    refuse(trade(issued));
    issued = fresh();
    refuse(trade(issued, otherVerifier));
    refuse(trade(issued));
    refuse(trade(fresh(), verifier, "other"));
    refuse(trade(QString(64, u'0')));

    const auto early = fresh();
    const auto late = fresh();
    running.now += SignInCodes::life.count() - 1;
    EXPECT_EQ(trade(early).status, 200);
    running.now += 1;
    refuse(trade(late));

    // The password was changed in the meantime.
    issued = fresh();
    const auto login = running.signIn("Ada");
    running.ask("/v1/account/profile",
                R"({"action":"password","old":"correct horse","new":"battery staple"})",
                login.token);
    EXPECT_EQ(trade(issued).status, 401);
}

} // namespace
