#include "RunningService.h"
#include "WallStore.h"

#include "Database.h"

#include "records/ArchiveStyle.h"
#include "records/JsonDecoder.h"
#include "records/Wall.h"

#include <gtest/gtest.h>

namespace {

struct Pinned {
    bool ok = false;
    WallItem item;
};

} // namespace

template <>
struct JsonFields<Pinned> {
    static constexpr auto table =
        std::make_tuple(jsonField("ok", &Pinned::ok), jsonField("item", &Pinned::item));
};

namespace {

constexpr auto on = R"({"on":true})";
constexpr auto off = R"({"on":false})";

SavedChat chat(const QString &question) {
    SavedChat chat;
    chat.lit = {QStringLiteral("foible")};
    chat.question = question;
    chat.cases = {{QStringLiteral("foible"), QStringLiteral("quay"), QStringLiteral("Lantern"),
                   QStringLiteral("Harbour Board"), std::nullopt, std::nullopt, false,
                   QStringLiteral("opaque")}};
    chat.turns = {{QStringLiteral("assistant"), QStringLiteral("Because.")}};
    return chat;
}

QByteArray pin(const QString &title, const SavedChat &chat, const QByteArray &more = {}) {
    return R"({"title":")" + title.toUtf8() + R"(","thread":)" + Json::encode(chat) + more + "}";
}

class Wall : public testing::Test {
protected:
    void SetUp() override {
        ada = running.join("Ada");
        bob = running.join("Bob");
    }

    std::string toggle(const Login &login, const QByteArray &archive, const QByteArray &id) {
        return running
            .ask("/v1/wall/case", R"({"archive":")" + archive + R"(","id":")" + id + R"("})",
                 login.token)
            .body;
    }
    Pinned pinned(const QByteArray &body) {
        return running.ask<Pinned>("/v1/wall/chat", body, ada.token);
    }
    QList<WallItem> items(const Login &login) {
        return running.ask<Items<WallItem>>("/v1/wall", {}, login.token).items;
    }

    RunningService running;
    Login ada;
    Login bob;
};

TEST_F(Wall, TogglesCases) {
    EXPECT_EQ(toggle(ada, "foible", "quay"), on);
    running.now += 10;
    EXPECT_EQ(toggle(ada, "lumen", "tide"), on);
    EXPECT_EQ(toggle(bob, "foible", "quay"), on);

    auto wall = items(ada);
    ASSERT_EQ(wall.size(), 2);
    EXPECT_EQ(wall[0].caseId, QStringLiteral("tide"));
    EXPECT_EQ(wall[0].createdAt, wall[1].createdAt + 10);
    const auto quay = wall[1];
    EXPECT_EQ(quay.kind, QStringLiteral("save"));
    EXPECT_EQ(quay.site, ArchiveStyle::domain(QStringLiteral("foible")));
    EXPECT_EQ(quay.archiveID(), QStringLiteral("foible"));
    EXPECT_EQ(quay.title, QStringLiteral("Lantern on the quay"));
    EXPECT_EQ(quay.body, QStringLiteral("Something went on."));
    EXPECT_EQ(
        running.get(quay.url->section(QLatin1Char('/'), 3).prepend(QLatin1Char('/')).toStdString())
            .status,
        200);
    const auto card = quay.caseCard();
    ASSERT_TRUE(card);
    EXPECT_EQ(card->summary, quay.body);
    EXPECT_EQ(card->era, QStringLiteral("1938"));

    EXPECT_EQ(toggle(ada, "foible", "quay"), off);
    EXPECT_EQ(items(ada).size(), 1);
    EXPECT_EQ(items(bob).size(), 1);
    EXPECT_NE(toggle(ada, "foible", "unheard").find("case_not_found"), std::string::npos);

    // A case that has left the catalogue can still be taken off.
    {
        Database database(running.home());
        Database::Access access(database);
        access.execute("DELETE FROM cases WHERE id = 'tide'");
    }
    EXPECT_EQ(items(ada).size(), 1);
    EXPECT_EQ(toggle(ada, "lumen", "tide"), off);
    EXPECT_TRUE(items(ada).isEmpty());
}

TEST_F(Wall, PinsAndReplacesChats) {
    const auto first = pinned(
        pin(QStringLiteral("First"), chat(QStringLiteral("Why?")), R"(,"site":"foible.fail")"));
    running.now += 1000;
    const auto second = pinned(pin(QStringLiteral("Second"), chat(QStringLiteral("How?"))));
    EXPECT_TRUE(first.ok);
    EXPECT_EQ(items(ada), (QList<WallItem>{second.item, first.item}));
    EXPECT_EQ(first.item.kind, QStringLiteral("chat"));
    EXPECT_EQ(first.item.site, QStringLiteral("foible.fail"));
    EXPECT_FALSE(second.item.site);
    auto expected = chat(QStringLiteral("Why?"));
    expected.id = first.item.id;
    expected.savedAt = first.item.createdAt;
    EXPECT_EQ(first.item.chat(), expected);

    running.now += 1000;
    const auto id = R"(,"id":")" + first.item.id.toUtf8() + R"(")";
    const auto again = pinned(pin(QStringLiteral("Newer"), chat(QStringLiteral("Why not?")), id));
    EXPECT_EQ(again.item.id, first.item.id);
    EXPECT_EQ(again.item.createdAt, first.item.createdAt);
    EXPECT_EQ(again.item.title, QStringLiteral("Newer"));
    EXPECT_EQ(again.item.chat()->question, QStringLiteral("Why not?"));
    EXPECT_EQ(items(ada), (QList<WallItem>{second.item, again.item}));
}

TEST_F(Wall, IsOnlyItsOwnersToChange) {
    const auto item = pinned(pin(QStringLiteral("Mine"), chat(QStringLiteral("Why?")))).item;
    toggle(ada, "foible", "quay");
    const auto caseId = items(ada)[0].id;
    const auto remove = [&](const Login &login, const QString &id) {
        return running.ask("/v1/wall", R"({"remove":")" + id.toUtf8() + R"("})", login.token)
            .status;
    };
    const auto replace = [&](const Login &login, const QString &id) {
        return running.ask("/v1/wall/chat",
                           pin(QStringLiteral("Theirs"), chat(QStringLiteral("Why?")),
                               R"(,"id":")" + id.toUtf8() + R"(")"),
                           login.token);
    };
    EXPECT_EQ(remove(bob, item.id), 200);
    for (const auto &response :
         {replace(bob, item.id), replace(ada, caseId), replace(ada, QStringLiteral("unheard"))}) {
        EXPECT_EQ(response.status, 404);
        EXPECT_EQ(response.body.find(R"({"error":"saved_chat_missing")"), 0u) << response.body;
    }
    EXPECT_EQ(items(ada).size(), 2);
    EXPECT_TRUE(items(bob).isEmpty());
    EXPECT_EQ(remove(ada, item.id), 200);
    EXPECT_EQ(remove(ada, item.id), 200);
    EXPECT_EQ(items(ada).size(), 1);
    for (const char *address : {"/v1/wall", "/v1/wall/case", "/v1/wall/chat"})
        EXPECT_EQ(running.ask(address, "{}").status, 401) << address;
    EXPECT_EQ(running.ask("/v1/wall", {}).status, 401);
}

TEST_F(Wall, HasLimits) {
    const auto refused = [&](const QByteArray &body) {
        return running.ask("/v1/wall/chat", body, ada.token);
    };
    struct Case {
        QByteArray body;
        int status;
        std::string text;
    };
    const auto why = chat(QStringLiteral("Why?"));
    const Case cases[] = {
        {pin(QString(10'001, u'a'), why), 413, "\\\"title\\\""},
        {pin(QStringLiteral("a"), why, R"(,"site":")" + QByteArray(301, 'a') + R"(")"), 413,
         "\\\"site\\\""},
        {pin(QStringLiteral("a"), chat(QString(500'000, u'a'))), 413, "\\\"thread\\\""},
        {pin(QStringLiteral("a"), chat(QString(1'000'000, u'a'))), 413, "body_too_large"},
        {R"({"title":"a","thread":{}})", 400, "missing"},
        {R"({"title":"a"})", 400, "missing"},
    };
    for (const auto &each : cases) {
        const auto response = refused(each.body);
        EXPECT_EQ(response.status, each.status) << each.text;
        EXPECT_NE(response.body.find(each.text), std::string::npos) << response.body;
    }

    {
        Database database(running.home());
        Database::Access access(database);
        Database::Transaction transaction(access);
        auto insert = access.prepare("INSERT INTO wall_items (account, id, archive, caseId, item)"
                                     " VALUES (1, ?, '', '', '')");
        for (qint64 count = 1; count < WallStore::greatestCount; ++count)
            insert.bind(count).run();
        transaction.commit();
    }
    EXPECT_EQ(toggle(ada, "foible", "quay"), on);
    EXPECT_NE(toggle(ada, "lumen", "tide").find("wall_full"), std::string::npos);
    EXPECT_NE(refused(pin(QStringLiteral("a"), why)).body.find("wall_full"), std::string::npos);
    EXPECT_EQ(toggle(ada, "foible", "quay"), off);
}

} // namespace
