#include "copy/Copy.h"

#include <gtest/gtest.h>

#include <latch>
#include <thread>
#include <vector>

namespace {

QString key(const char *text) {
    return QString::fromUtf8(text);
}

/// A choice that is no language, and so has no table: what a lost file looks like.
constexpr auto withoutTable = AppLanguage::system;

} // namespace

TEST(CopyTest, AMissingTextFallsBackToEnglishAndThenToItsKey) {
    const auto english = Copy::text(key("cancel"), AppLanguage::en);
    ASSERT_NE(english, key("cancel"));
    ASSERT_TRUE(Copy::table(withoutTable).isEmpty());
    EXPECT_EQ(Copy::text(key("cancel"), withoutTable), english);

    for (const auto language : AppLanguages::allCases) {
        const auto &table = Copy::table(language);
        const auto &fallback = Copy::table(AppLanguage::en);
        for (auto entry = fallback.begin(); entry != fallback.end(); ++entry)
            ASSERT_EQ(Copy::text(entry.key(), language), table.value(entry.key(), entry.value()));
        for (const auto *unknown : {"no such key", "", "Cancel", "cat.makers.unheard of"})
            EXPECT_EQ(Copy::text(key(unknown), language), key(unknown));
    }
}

TEST(CopyTest, ATableIsOneFlatObjectOfTextsAndNeverHalfRead) {
    const Copy::Table expected = {{key("a"), key("one")}, {key("ü.b"), QString()}};
    EXPECT_EQ(Copy::parseTable(" {\"a\":\"one\",\"\xC3\xBC.b\":\"\"} "), expected);
    for (const auto *broken :
         {"", "null", R"(["a","one"])", R"({"a":"one")", R"({"a":"one",})", R"({"a":"one"} x)",
          R"({"a":"one","b":2})", R"({"a":"one","b":{"c":"two"}})", "{\"a\":\"\xFF\"}",
          "\xFF\xFE{\"a\":\"one\"}"})
        EXPECT_TRUE(Copy::parseTable(broken).isEmpty()) << broken;
}

TEST(CopyTest, ManyThreadsMayAskFirstAtOnce) {
    constexpr int threads = 8;
    std::latch together(threads);
    std::vector<const Copy::Table *> tables(threads);
    std::vector<QString> texts(threads);
    std::vector<std::thread> askers;
    for (std::size_t at = 0; at < threads; ++at) {
        askers.emplace_back([&, at] {
            together.arrive_and_wait();
            texts[at] = Copy::text(key("cancel"), AppLanguage::de);
            tables[at] = &Copy::table(AppLanguage::en);
        });
    }
    for (auto &asker : askers)
        asker.join();
    for (std::size_t at = 0; at < threads; ++at) {
        EXPECT_EQ(tables[at], tables[0]);
        EXPECT_EQ(texts[at], texts[0]);
    }
    EXPECT_FALSE(tables[0]->isEmpty());
    EXPECT_NE(texts[0], key("cancel"));
}
