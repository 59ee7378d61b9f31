#include "LibraryRoutes.h"
#include "RunningService.h"

#include "records/Library.h"

#include <gtest/gtest.h>

namespace {

Conversation conversation(const QString &title) {
    Conversation conversation;
    conversation.title = title;
    conversation.messages = {{Identifier::make(), QStringLiteral("user"), title, {}, std::nullopt}};
    conversation.updatedAt = {1'800'000'000'123};
    return conversation;
}

LibraryChange edit(const Conversation &conversation, qint64 base) {
    LibraryChange change;
    change.kind = QStringLiteral("conversation");
    change.key = conversation.id.text;
    change.baseVersion = base;
    change.conversation = conversation;
    return change;
}

LibraryChange save(const QString &id) {
    LibraryChange change;
    change.kind = QStringLiteral("saved");
    change.card.emplace().key = QStringLiteral("foible:") + id;
    change.key = change.card->key;
    return change;
}

LibraryChange removal(const LibraryChange &of, qint64 base) {
    LibraryChange change;
    change.kind = of.kind;
    change.key = of.key;
    change.baseVersion = base;
    change.deleted = true;
    return change;
}

/// One device that is signed in.
struct Device {
    RunningService &service;
    Login login;

    LibraryReply sync(const QList<LibraryChange> &changes) {
        return service.ask<LibraryReply>("/v1/library", Json::encode(LibraryUpload{changes}),
                                         login.token);
    }
    httplib::Response send(const QByteArray &body) {
        return service.ask("/v1/library", body, login.token);
    }
};

Device device(RunningService &service) {
    return {service, service.signIn("Ada")};
}

const LibraryRecord *find(const LibraryReply &reply, const QString &key) {
    for (const LibraryRecord &record : reply.records) {
        if (record.key == key)
            return &record;
    }
    return nullptr;
}

class Library : public testing::Test {
protected:
    void SetUp() override { running.registerAccount("Ada"); }

    RunningService running;
};

TEST_F(Library, IsTheSameOnEveryDevice) {
    auto here = device(running);
    auto there = device(running);
    auto talk = conversation(QStringLiteral("Why?"));
    talk.archives = QList<QString>{QStringLiteral("foible")};
    talk.wallID = QStringLiteral("w1");
    const auto saved = save(QStringLiteral("quay"));
    const QList<LibraryChange> changes = {edit(talk, 0), saved};

    const auto first = here.sync(changes);
    EXPECT_EQ(first.accepted, (QList<QString>{changes[0].opId.text, changes[1].opId.text}));
    EXPECT_FALSE(first.conflicts);
    EXPECT_EQ(first.revision, 2);

    const auto second = there.sync({removal(saved, 2)});
    ASSERT_EQ(second.records.size(), 2);
    const auto *record = find(second, talk.id.text);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->conversation, talk);
    EXPECT_EQ(record->version, 1);
    record = find(second, saved.key);
    ASSERT_TRUE(record);
    EXPECT_TRUE(record->deleted);
    EXPECT_FALSE(record->card);
    EXPECT_EQ(record->version, 3);

    // Nobody else's.
    running.registerAccount("Bob");
    Device other{running, running.signIn("Bob")};
    const auto nothing = other.sync({});
    EXPECT_TRUE(nothing.records.isEmpty());
    EXPECT_EQ(nothing.revision, 0);
    EXPECT_EQ(nothing.accepted, QList<QString>());
    EXPECT_EQ(other.send(Json::encode(LibraryUpload{{edit(talk, 0)}})).status, 200);
    EXPECT_EQ(here.sync({}).revision, 3);
}

TEST_F(Library, KeepsBothVersionsOfAConversation) {
    auto here = device(running);
    auto there = device(running);
    auto talk = conversation(QStringLiteral("begun"));
    here.sync({edit(talk, 0)});

    auto mine = talk;
    mine.title = QStringLiteral("from here");
    auto theirs = talk;
    theirs.title = QStringLiteral("from there");
    here.sync({edit(mine, 1)});
    const auto change = edit(theirs, 1);
    const auto reply = there.sync({change});
    EXPECT_EQ(reply.accepted, QList<QString>{change.opId.text});
    ASSERT_TRUE(reply.conflicts);
    ASSERT_EQ(reply.conflicts->size(), 1);
    const auto conflict = reply.conflicts->first();
    EXPECT_EQ(conflict.originalKey, talk.id.text);
    EXPECT_EQ(find(reply, talk.id.text)->conversation, mine);
    const auto *preserved = find(reply, conflict.preservedKey);
    ASSERT_TRUE(preserved);
    theirs.id = *Identifier::parse(conflict.preservedKey);
    EXPECT_EQ(theirs.id.text, conflict.preservedKey);
    EXPECT_EQ(preserved->conversation, theirs);
    EXPECT_EQ(preserved->version, 3);

    // The reply was lost: the same request has the same outcome, and makes no third version.
    const auto again = there.sync({change, change});
    EXPECT_EQ(again.records.size(), 2);
    EXPECT_EQ(again.revision, 3);
    ASSERT_TRUE(again.conflicts);
    EXPECT_EQ(again.conflicts->first().preservedKey, conflict.preservedKey);
}

TEST_F(Library, TakesLateChangesAsTheyWereMeant) {
    auto here = device(running);
    auto there = device(running);
    auto talk = conversation(QStringLiteral("begun"));
    const auto begun = edit(talk, 0);
    here.sync({begun});

    // Here never heard of its second version, and goes on.
    talk.title = QStringLiteral("second");
    here.sync({edit(talk, 1)});
    talk.title = QStringLiteral("third");
    auto reply = here.sync({edit(talk, 1)});
    EXPECT_FALSE(reply.conflicts);
    EXPECT_EQ(reply.records.size(), 1);
    EXPECT_EQ(reply.records[0].conversation, talk);

    // There removes what it saw first; the newer text stays, the change does not come again.
    const auto late = removal(begun, 1);
    reply = there.sync({late});
    EXPECT_EQ(reply.accepted, QList<QString>{late.opId.text});
    EXPECT_EQ(reply.records[0].conversation, talk);
    EXPECT_EQ(reply.revision, 3);

    reply = there.sync({removal(begun, 3)});
    EXPECT_TRUE(reply.records[0].deleted);
    talk.title = QStringLiteral("back");
    reply = here.sync({edit(talk, 3)});
    EXPECT_FALSE(reply.conflicts);
    EXPECT_EQ(reply.records[0].conversation, talk);
    EXPECT_EQ(reply.records[0].version, 5);

    // An answer of here's that began before its first reply. It had seen all that here has written,
    // and there has only removed.
    talk.title = QStringLiteral("answered");
    reply = here.sync({edit(talk, 0)});
    EXPECT_FALSE(reply.conflicts);
    EXPECT_EQ(reply.records[0].conversation, talk);
}

TEST_F(Library, RefusesAWholeRequestByName) {
    auto here = device(running);
    const auto sound = save(QStringLiteral("quay"));
    const auto talk = edit(conversation(QStringLiteral("Why?")), 0);
    struct Case {
        const char *what;
        LibraryChange change;
    };
    QList<Case> cases;
    const auto refuse = [&](const char *what, LibraryChange change, auto &&alter) {
        alter(change);
        cases.append({what, std::move(change)});
    };
    refuse("kind", sound, [](auto &change) { change.kind = QStringLiteral("other"); });
    refuse("key", sound, [](auto &change) { change.key = QString(301, u'a'); });
    refuse("baseVersion", talk, [](auto &change) { change.baseVersion = -1; });
    refuse("card", sound, [](auto &change) { change.card.reset(); });
    refuse("card", sound, [](auto &change) { change.key = QStringLiteral("foible:hull"); });
    refuse("conversation", talk, [](auto &change) { change.conversation.reset(); });
    refuse("conversation", talk, [](auto &change) { change.key = change.key.toLower(); });
    refuse("65536 bytes", sound, [](auto &change) { change.card->note = QString(65536, u'a'); });
    refuse("900000 bytes", talk,
           [](auto &change) { change.conversation->title = QString(900'000, u'a'); });
    for (const Case &each : cases) {
        const auto response = here.send(Json::encode(LibraryUpload{{sound, each.change}}));
        EXPECT_EQ(response.status, 400) << each.what;
        EXPECT_NE(response.body.find(each.what), std::string::npos) << response.body;
        EXPECT_NE(response.body.find(each.change.opId.text.toStdString()), std::string::npos);
    }
    EXPECT_EQ(here.send(R"({"changes":[{}]})").status, 400);

    const auto padded = [](qsizetype size) {
        const QByteArray body = R"({"changes":[]})";
        return body + QByteArray(size - body.size(), ' ');
    };
    EXPECT_EQ(here.send(padded(LibraryRoutes::greatestUpload)).status, 200);
    const auto response = here.send(padded(LibraryRoutes::greatestUpload + 1));
    EXPECT_EQ(response.status, 413);
    EXPECT_NE(response.body.find("1000000 bytes"), std::string::npos) << response.body;

    EXPECT_TRUE(here.sync({}).records.isEmpty());
    EXPECT_EQ(running.ask("/v1/library", R"({"changes":[]})").status, 401);
}

} // namespace
