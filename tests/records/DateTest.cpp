#include "records/Conversation.h"
#include "records/Json.h"

#include <gtest/gtest.h>

#include <optional>
#include <random>
#include <string>

namespace {

constexpr auto file = DateForm::secondsSince2001;
constexpr auto wire = DateForm::millisecondsSince1970;

std::optional<qint64> readDate(const std::string &text, DateForm dates) {
    const auto json = QByteArray::fromStdString(
        R"({"id":"6F9619FF-8B86-D011-B42D-00CF4FC964FF","title":"","messages":[],"updatedAt":)" +
        text + "}");
    try {
        return Json::decode<Conversation>(json, dates).updatedAt.milliseconds;
    } catch (const DecodingError &) {
        return std::nullopt;
    }
}

Conversation conversationAt(qint64 milliseconds) {
    Conversation conversation;
    conversation.updatedAt = {milliseconds};
    return conversation;
}

Conversation crossed(const Conversation &conversation, DateForm dates) {
    return Json::decode<Conversation>(Json::encode(conversation, dates), dates);
}

constexpr qint64 beyond = 4000000000000000;

} // namespace

TEST(DateTest, BothFormsNameTheSameMoment) {
    EXPECT_EQ(readDate("0", file), 978307200000);
    EXPECT_EQ(readDate("-978307200", file), 0);
    EXPECT_EQ(readDate("-978307200.001", file), -1);
    EXPECT_EQ(readDate("721692800.123", file), 1700000000123);
    EXPECT_EQ(readDate("1700000000123", wire), 1700000000123);
    EXPECT_EQ(readDate("1.700000000123e12", wire), 1700000000123);
    EXPECT_EQ(readDate("-1", wire), -1);
    const auto written = Json::encode(conversationAt(1700000000123), file);
    EXPECT_TRUE(written.contains("\"updatedAt\":721692800.123")) << written.constData();
    EXPECT_TRUE(Json::encode(conversationAt(978307199999), file).contains("\"updatedAt\":-0.001"));
    // Finer ones are rounded.
    EXPECT_EQ(readDate("721692800.12345678", file), 1700000000123);
    EXPECT_EQ(readDate("721692800.12367892", file), 1700000000124);
    EXPECT_EQ(readDate("1700000000123.4", wire), 1700000000123);
}

TEST(DateTest, CrossingBetweenTheFormsChangesNothing) {
    std::mt19937_64 random(7);
    std::uniform_int_distribution<qint64> any(-beyond + 1, beyond - 1);
    std::vector<qint64> moments = {0,          1,          -1,           978307199999, 978307200001,
                                   beyond - 1, 1 - beyond, 1700000000123};
    for (int count = 0; count < 500; ++count)
        moments.push_back(any(random));

    for (const auto moment : moments) {
        const auto original = conversationAt(moment);
        EXPECT_EQ(crossed(original, file), original) << moment;
        EXPECT_EQ(crossed(original, wire), original) << moment;
    }
    auto conversation = conversationAt(1700000000987);
    const auto original = conversation;
    for (int crossing = 0; crossing < 100; ++crossing)
        conversation = crossed(conversation, crossing % 2 == 0 ? file : wire);
    EXPECT_EQ(conversation, original);
}

// A moment that one form takes and the other refuses would make a library file that cannot be read.
TEST(DateTest, BothFormsHaveTheSameRange) {
    for (const auto *text :
         {"4000000000000000", "3999999999999999.9", "-4000000000000000", "1e300"})
        EXPECT_EQ(readDate(text, wire), std::nullopt) << text;
    for (const auto *text : {"3999021692800", "-4000978307200", "1e300", "\"0\"", "null", "true"})
        EXPECT_EQ(readDate(text, file), std::nullopt) << text;
    EXPECT_EQ(readDate("3999999999999999", wire), beyond - 1);
    EXPECT_EQ(readDate("3999021692799.999", file), beyond - 1);
}
