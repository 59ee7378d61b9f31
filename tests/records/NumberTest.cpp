#include "records/Account.h"
#include "records/Json.h"

#include <QList>
#include <gtest/gtest.h>

#include <limits>
#include <optional>
#include <string>

namespace {

std::optional<qint64> readInteger(const std::string &text) {
    const auto json =
        QByteArray::fromStdString(R"({"plan":"free","limit":1,"used": )" + text + "}");
    try {
        return Json::decode<Quota>(json).used;
    } catch (const DecodingError &) {
        return std::nullopt;
    }
}

constexpr auto least = std::numeric_limits<qint64>::min();
constexpr auto greatest = std::numeric_limits<qint64>::max();

} // namespace

TEST(NumberTest, AnIntegerIsReadExactlyHoweverItIsWritten) {
    const std::pair<std::string, qint64> cases[] = {
        {"24", 24},
        {"24.000000000000000000000000", 24},
        {"2.4E+1", 24},
        {"240e-1", 24},
        {"0.000024e6", 24},
        {"-2400.00e-2", -24},
        {"0", 0},
        {"-0", 0},
        {"0e-999999999999999999999", 0},
        {"9007199254740993.0", 9007199254740993},
        {"9223372036854775807.0", greatest},
        {"922337203685477580.7e1", greatest},
        {"-9223372036854775808", least},
        {"-9.223372036854775808e18", least},
        {"1" + std::string(100000, '0') + "e-100000", 1},
        {"0." + std::string(99999, '0') + "7e100000", 7},
    };
    for (const auto &[text, value] : cases)
        EXPECT_EQ(readInteger(text), value) << text.substr(0, 40);
}

TEST(NumberTest, WhatIsNoIntegerOf64BitsIsRefused) {
    const auto texts =
        QByteArrayLiteral("24.5|24.00000000000000000000000000000001|1e-1|1e30|"
                          "9223372036854775808|-9223372036854775809|18446744073709551615|"
                          "9223372036854775807.5|1e99999999999999999999|\"24\"|true|[24]|024|"
                          "-024|+24|24.|.5|-|1e|1e+|0x18|24abc|2 4|NaN|Infinity|")
            .split('|');
    for (const auto &text : texts)
        EXPECT_EQ(readInteger(text.toStdString()), std::nullopt) << text.constData();
    EXPECT_EQ(readInteger("1" + std::string(100000, '0')), std::nullopt);
}

TEST(NumberTest, TheLimitsSurviveWriting) {
    for (const auto value : {least, least + 1, qint64(-1), greatest - 1, greatest}) {
        const Quota quota{QStringLiteral("free"), value, 0};
        EXPECT_EQ(Json::decode<Quota>(Json::encode(quota)), quota);
    }
}
