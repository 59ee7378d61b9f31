#include "service/API.h"
#include "service/Endpoints.h"
#include "tests/support/Await.h"
#include "tests/support/FakeTransport.h"

#include "records/Catalogue.h"

#include <QJsonArray>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

using Headers = std::vector<std::pair<QByteArray, QByteArray>>;

const auto base = u"https://a.example"_s;

} // namespace

TEST(Request, carriesTheTokenAndTheBodyOnlyWhereThereIsOne) {
    FakeTransport transport;
    const API guest(base, std::nullopt, transport);
    const API signedIn(base, u"t\u00f6ken"_s, transport);
    const std::pair<QByteArray, QByteArray> json{"Content-Type", "application/json"};
    const std::pair<QByteArray, QByteArray> token{"Authorization", "Bearer t\xc3\xb6ken"};
    EXPECT_EQ(guest.request(u"v1/health"_s, "GET").headers, Headers());
    EXPECT_EQ(guest.request(u"v1/health"_s, "GET").timeout, std::chrono::seconds(70));
    EXPECT_EQ(signedIn.request(u"v1/health"_s, "GET").headers, Headers{token});
    EXPECT_EQ(guest.request(u"v1/wall"_s, "POST", {}, "{}").headers, Headers{json});
    EXPECT_EQ(signedIn.request(u"v1/wall"_s, "POST", {}, "{}").headers, (Headers{token, json}));
    EXPECT_EQ(signedIn.request(u"v1/wall"_s, "POST", {}, "{}").timeout, std::chrono::seconds(70));
}

TEST(Request, getAndPostReachTheTransportAsBuilt) {
    FakeTransport transport;
    const API api(base, u"token"_s, transport);
    const QJsonObject json{{u"id"_s, qint64(9007199254740993)},
                           {u"text"_s, u"\u00e9 \"\n"_s},
                           {u"none"_s, QJsonValue()},
                           {u"list"_s, QJsonArray{true, u""_s}}};
    auto getting = api.get<Facets>(Endpoint::facets, {{u"archive"_s, u""_s}}, {});
    auto posting = api.post<Items<QString>>(Endpoint::wall, json, {});
    ASSERT_EQ(transport.requests().size(), 2U);

    const auto &get = transport.requests()[0];
    EXPECT_EQ(get.method, "GET");
    EXPECT_EQ(get.url.toEncoded(), "https://a.example/v1/facets?archive=");
    EXPECT_EQ(get.body, std::nullopt);

    const auto &post = transport.requests()[1];
    EXPECT_EQ(post.method, "POST");
    EXPECT_EQ(post.url.toEncoded(), "https://a.example/v1/wall");
    EXPECT_EQ(post.headers.size(), 2U);
    EXPECT_EQ(post.body, QByteArray(R"({"id":9007199254740993,"list":[true,""],"none":null,)"
                                    "\"text\":\"\xc3\xa9 \\\"\\n\"}"));

    transport.answer(u"/v1/wall"_s, 200, R"({"items":["a"]})");
    transport.answer(u"/v1/facets"_s, 200, R"({"categories":[],"years":[1999],"decades":[]})");
    EXPECT_EQ(await(std::move(getting)).years, QList<qint64>{1999});
    EXPECT_EQ(await(std::move(posting)).items, QList<QString>{u"a"_s});
}

TEST(Request, outlivesTheValueThatMadeIt) {
    FakeTransport transport;
    auto api = std::make_unique<API>(base, u"token"_s, transport);
    auto getting = api->get<Items<QString>>(Endpoint::categories, {}, {});
    api.reset();
    transport.answer(u"/v1/categories"_s, 200, R"({"items":[]})");
    EXPECT_TRUE(await(std::move(getting)).items.isEmpty());
}
