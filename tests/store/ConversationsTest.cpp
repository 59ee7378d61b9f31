#include "store/FirstCharacters.h"
#include "tests/store/ChatTest.h"

#include <QJsonArray>

using namespace Qt::StringLiterals;

namespace {

class Conversations : public ChatTest {
protected:
    QStringList titles() {
        QStringList result;
        for (const auto &conversation : store.library().conversations)
            result.append(conversation.title);
        return result;
    }

    const Conversation &kept(qsizetype place) { return store.library().conversations[place]; }
};

} // namespace

TEST(FirstCharacters, countsWhatPeopleSeeAndCutsNone) {
    const char *characters[] = {
        "a",
        "e\u0301\u0323",                              // a letter with two accents
        "\U0001F468\u200D\U0001F469\u200D\U0001F467", // a family, joined
        "\U0001F44D\U0001F3FD",                       // a thumb with its skin colour
        "\u2764\uFE0F\u200D\U0001F525",               // a heart on fire
        "1\uFE0F\u20E3",                              // a keycap
        "\u1112\u1161\u11AB",                         // a syllable of three jamo
        "\uAC00\u11A8",                               // a syllable and its final
        "\u0928\u093F",                               // a Devanagari letter and its vowel sign
        "\u0E01\u0E33",                               // a Thai letter and its vowel
        "\U0001D11E",                                 // beyond the basic plane
    };
    for (const auto *utf8 : characters) {
        const auto character = QString::fromUtf8(utf8);
        EXPECT_EQ(firstCharacters(character.repeated(3), 2), character.repeated(2)) << utf8;
        EXPECT_EQ(firstCharacters(character, 2), character) << utf8;
    }
    // Flags are pairs, and pairs are counted from the start.
    const auto flags = QString::fromUtf8("\U0001F1E9\U0001F1EA\U0001F1EB\U0001F1F7\U0001F1EF");
    EXPECT_EQ(firstCharacters(flags, 2), flags.first(8));
    EXPECT_EQ(firstCharacters(QString(), 5), QString());
}

TEST_F(Conversations, theFirstQuestionGivesTheTitleOfAHundredCharacters) {
    const auto thumb = QString::fromUtf8("\U0001F44D\U0001F3FD");
    askAndReceive(thumb.repeated(120), "a");
    EXPECT_EQ(store.chatTitle(), thumb.repeated(100));
    EXPECT_EQ(store.chat().messages[0].content, thumb.repeated(120));
    askAndReceive(u"Another one"_s, "b");
    EXPECT_EQ(store.chatTitle(), thumb.repeated(100));
}

TEST_F(Conversations, leavingOneMovesItToTheFront) {
    store.newChat();
    EXPECT_TRUE(store.library().conversations.isEmpty()) << "an empty one is not kept";
    EXPECT_EQ(store.destination(), u"chat"_s);
    askAndReceive(u"First"_s, "a");
    store.newChat();
    EXPECT_EQ(store.chatTitle(), store.text(u"chat.new"_s));
    askAndReceive(u"Second"_s, "b");
    EXPECT_EQ(titles(), (QStringList{u"Second"_s, u"First"_s}));

    system.clock.advance(std::chrono::seconds(5));
    store.setSelectedArchives({u"lumen"_s});
    setVersion(kept(1), 4);
    store.openChat(kept(1));
    EXPECT_EQ(store.chatTitle(), u"First"_s);
    EXPECT_TRUE(store.selectedArchives().isEmpty());
    EXPECT_EQ(titles(), (QStringList{u"Second"_s, u"First"_s}));
    EXPECT_EQ(kept(0).updatedAt, Date::from(system.clock.now())) << "though nothing changed";

    store.openChat(kept(0));
    EXPECT_EQ(titles(), (QStringList{u"First"_s, u"Second"_s}));
    EXPECT_EQ(pending().last().baseVersion, 4);
    auto chosen = kept(0);
    chosen.archives = {u"foible"_s, u"shift"_s};
    store.openChat(chosen);
    EXPECT_EQ(store.selectedArchives(), (QStringList{u"foible"_s, u"shift"_s}));
}

TEST_F(Conversations, openingTheOpenOneAgainLosesNothing) {
    askAndReceive(u"First"_s, "a");
    const auto listed = kept(0);
    const auto body = ask(u"Second"_s);
    body->send(delta("b"));
    ASSERT_TRUE(eventually([this] { return answer().content == u"b"_s; }));
    store.openChat(listed);
    EXPECT_EQ(store.messageCount(), 4);
    EXPECT_FALSE(store.isChatting());
    EXPECT_EQ(kept(0), store.chat());
    settleEventLoop();
}

TEST_F(Conversations, aNameIsTrimmedCutAndQueuedAgainstTheNewestVersion) {
    askAndReceive(u"First"_s, "a");
    const auto first = kept(0).id;
    store.newChat();
    askAndReceive(u"Second"_s, "b");
    setVersion(kept(1), 6);

    system.clock.advance(std::chrono::seconds(5));
    store.renameConversation(first, u" \n"_s + QString(200, u'x') + u" "_s);
    EXPECT_EQ(titles(), (QStringList{u"Second"_s, QString(150, u'x')})) << "it keeps its place";
    EXPECT_EQ(kept(1).updatedAt, Date::from(system.clock.now()));
    EXPECT_EQ(store.chatTitle(), u"Second"_s);
    EXPECT_EQ(pending().last().conversation, kept(1));
    EXPECT_EQ(pending().last().baseVersion, 6);
    store.renameConversation(kept(0).id, u"Open"_s);
    EXPECT_EQ(store.chatTitle(), u"Open"_s);

    const auto library = store.library();
    const auto saves = system.files.written().size();
    store.renameConversation(first, u" \t"_s);
    store.renameConversation(Identifier::make(), u"Nobody"_s);
    EXPECT_EQ(store.library(), library);
    EXPECT_EQ(system.files.written().size(), saves);
}

TEST_F(Conversations, aRemovedOneIsGoneEvenWhileItAnswers) {
    askAndReceive(u"First"_s, "a");
    const auto first = kept(0);
    store.newChat();
    const auto body = ask(u"Second"_s);
    store.setDestination(u"history"_s);

    store.deleteConversation(first);
    EXPECT_TRUE(store.isChatting());
    EXPECT_TRUE(pending().last().deleted);
    EXPECT_EQ(pending().last().key, first.id.text);

    const auto second = store.chat().id;
    store.deleteConversation(store.chat());
    EXPECT_FALSE(store.isChatting());
    EXPECT_EQ(store.messageCount(), 0);
    EXPECT_NE(store.chat().id, second);
    EXPECT_EQ(store.destination(), u"history"_s);
    EXPECT_TRUE(store.library().conversations.isEmpty());
    EXPECT_EQ(pending().size(), 2);
    EXPECT_TRUE(pending().last().deleted);
    settleEventLoop();
    EXPECT_FALSE(body->isOpen());
    EXPECT_TRUE(store.library().conversations.isEmpty());
}

TEST_F(Conversations, aFailedSaveIsToldAndLosesNothing) {
    system.files.failWrites(FileError::Code::noSpace);
    askAndReceive(u"Why?"_s, "a");
    EXPECT_TRUE(store.noticeText().startsWith(u"Could not save changes on this Mac. "_s));
    EXPECT_EQ(store.chatError(), std::nullopt);
    EXPECT_EQ(kept(0), store.chat());
}

TEST_F(Conversations, oneFromTheWallIsAskedOnAndStaysOnTheWall) {
    SavedChat saved;
    saved.id = u"mine"_s;
    saved.lit = {u"foible"_s};
    saved.question = u"Why do bridges fall?"_s;
    SavedCase cited;
    cited.archive = u"foible"_s;
    cited.id = u"7"_s;
    cited.key = u"secret"_s;
    saved.cases = {cited};
    saved.turns = {{u"assistant"_s, u"They resonate."_s}};
    saved.savedAt = 5;
    WallItem item;
    item.id = *saved.id;
    item.kind = u"chat"_s;
    item.createdAt = 5;
    item.body = QString::fromUtf8(Json::encode(saved));
    const auto wall = Json::encode(Items<WallItem>{{item}});
    system.transport.always(wallPath, HttpResponse{200, wall});
    store.beginRefreshWall();
    ASSERT_TRUE(eventually([&] { return store.wallCount() == 1; }));

    store.resumeWallChat(saved);
    const auto body = ask(u"And the Tay?"_s);
    EXPECT_EQ(lastBody()[u"archives"].toArray(), QJsonArray{u"foible"_s});
    EXPECT_EQ(lastBody()[u"messages"].toArray().size(), 3) << "question, cases, answer";
    EXPECT_EQ(lastBody()[u"cases"].toArray(),
              (QJsonArray{QJsonObject{
                  {u"archive"_s, u"foible"_s}, {u"id"_s, u"7"_s}, {u"accessKey"_s, u"secret"_s}}}));
    body->send(delta("It was weak.") + done());
    body->end();
    ASSERT_TRUE(eventually([&] { return !store.isChatting(); }));

    // To the service it is a conversation that it does not know, of an item that the wall has.
    ASSERT_EQ(pending().size(), 1);
    EXPECT_EQ(pending()[0].baseVersion, 0);
    EXPECT_EQ(pending()[0].conversation->wallID, u"mine"_s);
    EXPECT_EQ(kept(0).title, saved.question);
    EXPECT_EQ(store.wall(), QList<WallItem>{item});

    store.beginPinChat();
    ASSERT_TRUE(eventually([&] { return system.transport.waiting(u"/v1/wall/chat"_s) == 1; }));
    const auto thread = lastBody()[u"thread"].toObject();
    EXPECT_EQ(lastBody()[u"id"].toString(), u"mine"_s);
    EXPECT_EQ(thread[u"turns"].toArray().size(), 3) << "a message without words is no turn";
    EXPECT_EQ(thread[u"savedAt"].toInt(), 5);
    system.transport.answer(u"/v1/wall/chat"_s, 200,
                            R"({"ok":true,"item":)" + Json::encode(item) + "}");
    ASSERT_TRUE(eventually([&] { return !store.isPinning(); }));
    EXPECT_EQ(store.chat().wallID, u"mine"_s);
    EXPECT_EQ(store.wallCount(), 1);
}
