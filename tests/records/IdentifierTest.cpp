#include "records/Identifier.h"

#include "records/Conversation.h"
#include "records/Json.h"

#include <QSet>
#include <gtest/gtest.h>

TEST(IdentifierTest, EitherCaseIsReadAndUpperCaseIsKept) {
    const auto upper = QStringLiteral("6F9619FF-8B86-D011-B42D-00CF4FC964FF");
    for (const auto &text :
         {upper, upper.toLower(), QStringLiteral("6f9619FF-8B86-d011-B42D-00cf4fC964fF")})
        EXPECT_EQ(Identifier::parse(text), Identifier{upper});

    const auto read = Json::decode<Conversation>(
        R"({"id":"6f9619ff-8b86-d011-b42d-00cf4fc964ff","title":"","messages":[],"updatedAt":0})");
    EXPECT_TRUE(Json::encode(read).contains(upper.toUtf8()));
}

TEST(IdentifierTest, EveryOtherFormIsRefused) {
    for (const auto *text :
         {"", "6F9619FF-8B86-D011-B42D-00CF4FC964F", "6F9619FF-8B86-D011-B42D-00CF4FC964FF0",
          " 6F9619FF-8B86-D011-B42D-00CF4FC964F", "6F9619FF8B86D011B42D00CF4FC964FF",
          "{6F9619FF-8B86-D011-B42D-00CF4FC964FF}", "6F9619FF-8B86-D011-B42D+00CF4FC964FF",
          "6F9619FF8-B86-D011-B42D-00CF4FC964FF", "GF9619FF-8B86-D011-B42D-00CF4FC964FF",
          "6F9619FF-8B86-D011-B42D-00CF4FC964F\xEF\xBC\xA6"}) {
        EXPECT_EQ(Identifier::parse(QString::fromUtf8(text)), std::nullopt) << text;
        const auto json =
            QByteArray(R"({"title":"","messages":[],"updatedAt":0,"id":")") + text + "\"}";
        EXPECT_THROW(Json::decode<Conversation>(json), DecodingError) << text;
    }
}

TEST(IdentifierTest, NewOnesDifferAndHaveTheOneForm) {
    QSet<Identifier> made;
    for (int count = 0; count < 1000; ++count) {
        const auto identifier = Identifier::make();
        EXPECT_EQ(Identifier::parse(identifier.text), identifier);
        made.insert(identifier);
    }
    EXPECT_EQ(made.size(), 1000);
}
