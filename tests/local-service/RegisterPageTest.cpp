#include "RunningService.h"

#include <gtest/gtest.h>

namespace {

bool holds(const httplib::Response &response, const std::string &text) {
    return response.body.find(text) != std::string::npos;
}

httplib::Response send(RunningService &running, const httplib::Params &form,
                       const httplib::Headers &headers = {}) {
    auto result = running.client().Post("/google/register", headers, form);
    EXPECT_TRUE(result);
    return *result;
}

TEST(RegisterPage, SpeaksTheLanguageThatIsAskedFor) {
    RunningService running;
    const std::pair<std::string, std::string> pages[] = {
        {"", "<html lang=\"en\">"},
        {"?lang=en", "<html lang=\"en\">"},
        {"?lang=zh", "<html lang=\"zh-Hans\">"},
        {"?lang=%22%3E%3Cscript%3E", "<html lang=\"en\">"},
    };
    for (const auto &[query, language] : pages) {
        const auto page = running.get("/google/register" + query);
        EXPECT_EQ(page.status, 200);
        EXPECT_TRUE(holds(page, language)) << query;
        EXPECT_FALSE(holds(page, "<script"));
        const auto policy = page.get_header_value("Content-Security-Policy");
        EXPECT_NE(policy.find("form-action 'self';"), std::string::npos) << policy;
        EXPECT_NE(policy.find("frame-ancestors 'none'"), std::string::npos) << policy;
        // Any stricter, and a browser sends "Origin: null" with the form, which is refused.
        EXPECT_EQ(page.get_header_value("Referrer-Policy"), "same-origin");
    }
}

TEST(RegisterPage, TellsWhatIsWrongAndKeepsTheName) {
    RunningService running;
    running.registerAccount("Ada");
    const std::string good = RunningService::password;
    struct Attempt {
        std::string handle, password, repeat, lang;
        int status;
        std::string text;
    };
    const Attempt attempts[] = {
        {"a", good, good, "en", 400, "A name has 2 to 40"},
        {std::string(41, 'a'), good, good, "en", 400, "A name has 2 to 40"},
        {"<b>&\"", good, good, "en", 400, "value=\"&lt;b&gt;&amp;&quot;\""},
        // A blank that has no width.
        {"b\xe2\x80\x8b"
         "ob",
         good, good, "en", 400, "A name has 2 to 40"},
        {"bob", "1234567", "1234567", "en", 400, "at least 8 characters"},
        {"bob", good, good + "r", "en", 400, "not the same"},
        {" aDA", good, good, "en", 409, "This name is taken."},
        {" aDA", good, good, "zh", 409, "该用户名已被使用。"},
        {"", "", "", "zh", 400, "role=\"alert\""},
    };
    for (const auto &attempt : attempts) {
        const auto page = send(running, {{"handle", attempt.handle},
                                         {"password", attempt.password},
                                         {"repeat", attempt.repeat},
                                         {"lang", attempt.lang}});
        EXPECT_EQ(page.status, attempt.status) << attempt.handle;
        EXPECT_TRUE(holds(page, attempt.text)) << page.body;
        EXPECT_FALSE(holds(page, good));
    }

    const auto page = send(running, {{"handle", " O'Brien & 李 "}, {"password", good}});
    EXPECT_EQ(page.status, 400);
    const auto made =
        send(running,
             {{"handle", " O'Brien 李 "}, {"password", good}, {"repeat", good}, {"lang", "zh"}});
    EXPECT_EQ(made.status, 200);
    EXPECT_TRUE(holds(made, "以 O&#x27;Brien 李 的名字登录") ||
                holds(made, "以 O'Brien 李 的名字登录"))
        << made.body;
}

TEST(RegisterPage, TakesNothingFromOtherSites) {
    RunningService running;
    const auto port = std::to_string(running.service.port());
    const httplib::Params form = {{"handle", "eve"},
                                  {"password", RunningService::password},
                                  {"repeat", RunningService::password}};
    EXPECT_EQ(send(running, form, {{"Origin", "https://evil.example"}}).status, 403);
    EXPECT_EQ(send(running, form, {{"Origin", "null"}}).status, 403);
    EXPECT_EQ(send(running, form, {{"Origin", "http://127.0.0.1:" + port}}).status, 200);
}

} // namespace
