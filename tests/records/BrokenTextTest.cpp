#include "tests/records/RecordTexts.h"

#include <gtest/gtest.h>

#include <rapidjson/encodedstream.h>
#include <rapidjson/memorystream.h>
#include <rapidjson/reader.h>

#include <random>

namespace {

constexpr auto wire = DateForm::millisecondsSince1970;

/// A stranger's opinion on whether a text is JSON at all.
bool isJson(const QByteArray &text) {
    constexpr unsigned flags = rapidjson::kParseIterativeFlag |
                               rapidjson::kParseValidateEncodingFlag |
                               rapidjson::kParseNumbersAsStringsFlag;
    rapidjson::Reader reader;
    rapidjson::BaseReaderHandler<> handler;
    rapidjson::MemoryStream stream(text.constData(), static_cast<std::size_t>(text.size()));
    rapidjson::EncodedInputStream<rapidjson::UTF8<>, rapidjson::MemoryStream> input(stream);
    return !reader.Parse<flags>(input, handler).IsError();
}

/// A sound text with one more key, whose value no record asks for.
QByteArray withUnknown(const QByteArray &value) {
    return "{\"unknown\":" + value + R"(,"plan":"free","used":1,"limit":2})";
}

QByteArray nested(int depth, const QByteArray &open, const QByteArray &inner,
                  const QByteArray &close) {
    return open.repeated(depth) + inner + close.repeated(depth);
}

void expectRefused(const char *record, const QByteArray &text) {
    EXPECT_THROW(recordText(record).recode(text, wire), DecodingError)
        << text.left(200).toStdString();
}

class DamagedRecordTest : public testing::TestWithParam<RecordText> {};

} // namespace

INSTANTIATE_TEST_SUITE_P(Records, DamagedRecordTest, testing::ValuesIn(recordTexts()),
                         [](const auto &record) { return record.param.name; });

TEST_P(DamagedRecordTest, CutShortAnywhereItIsRefused) {
    const auto text = GetParam().text();
    for (qsizetype length = 0; length < text.size(); ++length)
        ASSERT_THROW(GetParam().recode(text.left(length), wire), DecodingError) << length;
}

// Whatever passes must be JSON, and must come out of the codec as it went in.
TEST_P(DamagedRecordTest, RandomDamageIsRefusedOrHarmless) {
    const auto original = GetParam().text();
    // Bytes that mean something to a reader, and some that mean nothing.
    const auto bytes =
        QByteArrayLiteral("{}[]\",:\\ntfu0-9.eE+ \n/\x00\x0c\x1f\x7f\x80\xbf\xc3\xed\xf4\xff");
    std::mt19937 random(42);
    const auto below = [&](qsizetype limit) { return static_cast<qsizetype>(random() % limit); };

    for (int round = 0; round < 2000; ++round) {
        auto text = original;
        for (auto damage = below(3); damage >= 0; --damage) {
            const auto at = below(text.size());
            switch (below(5)) {
            case 0:
                text[at] = bytes[below(bytes.size())];
                break;
            case 1:
                text.insert(at, bytes[below(bytes.size())]);
                break;
            case 2:
                text.remove(at, 1 + below(4));
                break;
            case 3:
                text.insert(at, original.mid(below(original.size()), 1 + below(40)));
                break;
            default:
                text[at] = static_cast<char>(text[at] ^ (1 << below(8)));
                break;
            }
            if (text.isEmpty())
                text = " ";
        }
        QByteArray once;
        try {
            once = GetParam().recode(text, wire);
        } catch (const DecodingError &) {
            continue;
        }
        ASSERT_TRUE(isJson(text)) << "round " << round << "\n" << text.toStdString();
        ASSERT_EQ(GetParam().recode(once, wire), once) << "round " << round;
    }
}

TEST_P(DamagedRecordTest, NothingMayStandAroundTheObject) {
    const auto text = GetParam().text();
    EXPECT_NO_THROW(GetParam().recode(" \t\r\n" + text + " \t\r\n", wire));
    for (const auto &broken :
         {text + "x", text + "}", text + "]", text + ",", text + text, text + " 1",
          text + QByteArray(1, '\0'), "x" + text, "[" + text + "]",
          QByteArray("\xEF\xBB\xBF") + text, QByteArray(1, '\0') + text})
        EXPECT_THROW(GetParam().recode(broken, wire), DecodingError) << broken.toStdString();
}

TEST(BrokenTextTest, WithoutAnObjectThereIsNoRecord) {
    for (const auto *text : {"", " ", "\n\n", "null", "true", "12", "\"text\"", "[]", "[{}]", "{",
                             "\"", "<html></html>"})
        expectRefused("Quota", text);
    expectRefused("Quota", QByteArray());
}

TEST(BrokenTextTest, BrokenSyntaxIsRefused) {
    for (const auto *text :
         {R"("plan":"a","used":1,"limit":2,)", R"("plan":"a" "used":1,"limit":2)",
          R"("plan":"a","used" 1,"limit":2)", R"('plan':"a","used":1,"limit":2)",
          R"("plan":"a\x","used":1,"limit":2)", R"("plan":"a\u12","used":1,"limit":2)",
          "\"plan\":\"a\nb\",\"used\":1,\"limit\":2", R"("plan":"a","used":1,"limit":2])"})
        expectRefused("Quota", "{" + QByteArray(text) + "}");
}

// A parser that jumps over what nobody asks for would let all of these pass.
TEST(BrokenTextTest, BrokenValuesOfUnknownKeysAreRefused) {
    EXPECT_NO_THROW(recordText("Quota").recode(withUnknown("[1e999,true,null,\"\"]"), wire));
    const char *broken[] = {"tru",        "truee",       "True",    "nul",       "nulll",
                            "fals",       "fa lse",      "01",      "-",         "1.",
                            "1e",         "1x",          "+1",      "0x1",       "NaN",
                            "\"\\x\"",    "\"\\u12g4\"", "[1,]",    "[,1]",      "[1 2]",
                            "[1}",        "{\"a\":1]",   "{\"a\"}", "{\"a\":}",  "{1:2}",
                            "{\"a\":1,}", "{\"a\":tru}", "[tru]",   "[[[nul]]]", "\"",
                            "\"open",     "undefined",   "",        "[\"a\"b]",  "{\"\\q\":1}"};
    for (const auto *value : broken)
        expectRefused("Quota", withUnknown(value));
}

TEST(BrokenTextTest, OnlyCompleteUnicodeIsRead) {
    for (const auto *text : {R"(\uD83D)", R"(\uDE00)", R"(\uD83Dx)", R"(\uD83D\n)",
                             R"(\uD83D\uD83D)", R"(\uDE00\uD83D)", "\xFF", "\xC3", "\xC0\x80",
                             "\xED\xA0\xBD", "\xF4\x90\x80\x80", "\x80"}) {
        const auto literal = "\"" + QByteArray(text) + "\"";
        expectRefused("TextItems", "{\"items\":[" + literal + "]}");
        expectRefused("Quota", withUnknown(literal));
        expectRefused("Quota", withUnknown("{" + literal + ":1}"));
    }
}

TEST(BrokenTextTest, DepthIsLimitedAndCostsNoStack) {
    constexpr int hostile = 100000;
    for (const auto *inner : {"", "1"}) {
        expectRefused("Quota", nested(hostile, "[", inner, "]"));
        expectRefused("Quota", nested(hostile, "[", inner, ""));
        expectRefused("Quota", withUnknown(nested(hostile, "[", inner, "]")));
        expectRefused("Quota", withUnknown(nested(hostile, "[", inner, "")));
        expectRefused("Quota", withUnknown(nested(hostile, "[{\"a\":", inner, "}]")));
    }
    expectRefused("Quota", nested(hostile, "{\"a\":", "1", "}"));
    expectRefused("Quota", nested(hostile, "{\"a\":", "1", ""));
    expectRefused("Quota", withUnknown(nested(hostile, "{\"a\":", "1", "}")));

    EXPECT_NO_THROW(recordText("Quota").recode(withUnknown(nested(500, "[", "1", "]")), wire));
    expectRefused("Quota", withUnknown(nested(600, "[", "1", "]")));
}

TEST(BrokenTextTest, OfARepeatedKeyOnlyTheLastValueCounts) {
    const auto recoded = [](const char *record, const char *text) {
        return recordText(record).recode(text, wire).toStdString();
    };
    EXPECT_EQ(recoded("Quota", R"({"plan":"a","used":1,"used":2,"limit":3,"plan":"b"})"),
              R"({"plan":"b","used":2,"limit":3})");
    EXPECT_EQ(recoded("TextItems", R"({"items":["a","b"],"items":["c"]})"), R"({"items":["c"]})");
    EXPECT_EQ(recoded("Account", R"({"user":{"id":"1","handle":"a","email":"x"},"plan":"p",
                                     "apple":true,"user":{"id":"2","handle":"b"},"apple":null})"),
              R"({"user":{"id":"2","handle":"b"},"plan":"p"})");
    expectRefused("Quota", R"({"plan":"a","used":"1","used":2,"limit":3})");
}
