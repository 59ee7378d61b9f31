#include "records/ArchiveStyle.h"
#include "storage/LibraryDisk.h"
#include "tests/store/ChatTest.h"

#include <QJsonArray>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

class ChatSession : public ChatTest {
protected:
    bool idle() {
        return eventually([this] { return !store.isChatting(); });
    }

    bool received(const QString &text) {
        return eventually([&] { return answer().content == text; });
    }
};

} // namespace

TEST_F(ChatSession, aQuestionRunsFromEndToEnd) {
    store.setSelectedArchives({u"lumen"_s, u"foible"_s});
    store.setLanguage(AppLanguage::ptBR);
    store.startChat(u" \tWhy\nso?\u2028"_s);
    EXPECT_TRUE(store.isChatting());
    EXPECT_TRUE(asked() == 0) << "the run begins in a turn of its own";
    ASSERT_TRUE(waitsForAnswer());
    EXPECT_EQ(lastBody()[u"question"].toString(), u"Why\nso?"_s);
    EXPECT_EQ(lastBody()[u"archives"].toArray(), (QJsonArray{u"foible"_s, u"lumen"_s}));
    EXPECT_EQ(lastBody()[u"locale"].toString(), u"pt-BR"_s);
    EXPECT_EQ(lastBody()[u"messages"].toArray().size(), 0);
    EXPECT_EQ(store.chat().archives, (QStringList{u"foible"_s, u"lumen"_s}));
    EXPECT_EQ(store.chatTitle(), u"Why\nso?"_s);
    ASSERT_EQ(store.messageCount(), 2);
    EXPECT_EQ(store.chat().messages[0].role, u"user"_s);
    EXPECT_EQ(answer().role, u"assistant"_s);
    EXPECT_TRUE(store.library().conversations.isEmpty()) << "in memory until its first save";

    const auto body = system.transport.answerHead(path());
    body->send("{\"type\":\"progress\",\"summary\":\"Reading\"}\n");
    EXPECT_TRUE(eventually([&] { return store.chatProgress() == u"Reading"_s; }));
    body->send("{\"type\":\"progress\",\"archive\":\"lumen\",\"summary\":\"Looking\"}\n");
    EXPECT_TRUE(eventually([&] {
        return store.chatProgress() == ArchiveStyle::domain(u"lumen"_s) + u" · Looking"_s;
    }));
    body->send(delta("Be"));
    ASSERT_TRUE(received(u"Be"_s));
    body->send(R"({"type":"references","mode":"evidence-preview","items":[)" + card("1") + "," +
               card("2") + "]}\n");
    body->send(delta("cause \xc3\xa9."));
    body->send(done());
    ASSERT_TRUE(received(u"Because é."_s));
    EXPECT_TRUE(store.isChatting()) << "done is not the end";
    body->end();
    ASSERT_TRUE(idle());
    EXPECT_EQ(answer().references.size(), 2);
    EXPECT_EQ(answer().mode, u"evidence-preview"_s);
    EXPECT_EQ(store.chatError(), std::nullopt);
    EXPECT_EQ(store.library().conversations, QList<Conversation>{store.chat()});
    EXPECT_EQ(LibraryDisk::load(system.files, store.libraryKey()).conversations,
              QList<Conversation>{store.chat()});
    ASSERT_EQ(pending().size(), 1);
    EXPECT_EQ(pending()[0].baseVersion, 0);
    EXPECT_FALSE(body->isOpen());
}

TEST_F(ChatSession, everyLineTakesItsEffectAndNothingElse) {
    const auto body = ask(u"Why?"_s);
    const auto references = [](const QByteArray &rest) {
        return "{\"type\":\"references\"" + rest + "}\n";
    };
    body->send(references(R"(,"mode":"full","items":[)" + card("1") + "]") + delta("a"));
    ASSERT_TRUE(received(u"a"_s));
    EXPECT_EQ(answer().references.size(), 1);
    body->send("\r\n\r\n{\"type\":\"progress\",\"text\":\"no\"}\r{\"type\":\"progress\","
               "\"summary\":\"\"}\r\n{\"type\":\"Delta\",\"text\":\"no\"}\n{\"type\":\"delta\"}\n"
               "{\"type\":\"thought\",\"text\":\"no\"}\n");
    body->send(references("") + delta("b") + R"({"type":"delta","text":"half)");
    ASSERT_TRUE(received(u"ab"_s));
    settleEventLoop();
    EXPECT_EQ(answer().content, u"ab"_s) << "half a line has no effect";
    EXPECT_TRUE(answer().references.isEmpty()) << "the last word stands";
    EXPECT_EQ(answer().mode, std::nullopt);
    EXPECT_EQ(store.chatProgress(), std::nullopt);
}

TEST_F(ChatSession, everyFailureKeepsWhatCameAndSaysWhy) {
    const auto lost = u"The connection broke before the answer was complete; please try again."_s;
    const auto unreadable = store.text(u"decodingError"_s);
    const auto late = u"This took too long and was stopped; please try again."_s;
    using Code = URLError::Code;
    struct Row {
        const char *name;
        std::function<void(FakeBody &)> happen;
        QString content;
        QString error;
    };
    const std::vector<Row> rows = {
        {"a whole answer", [](FakeBody &body) { body.send(delta("a") + done()); }, u"a"_s, {}},
        {"done without a line end",
         [](FakeBody &body) { body.send(delta("a") + done().trimmed()); },
         u"a"_s,
         {}},
        {"more after done, some of it no UTF-8",
         [](FakeBody &body) {
             body.send(delta("a") + done() + "{\"type\":\"later\"}\n" + delta("\xff") +
                       R"({"type":"delta","text":"?"})");
         },
         u"a\uFFFD?"_s,
         {}},
        {"no done", [](FakeBody &body) { body.send(delta("a")); }, u"a"_s, lost},
        {"nothing at all", [](FakeBody &) {}, u""_s, lost},
        {"a broken connection",
         [](FakeBody &body) {
             body.send(delta("a"));
             body.breakOff(Code::networkConnectionLost);
         },
         u"a"_s, lost},
        {"silence",
         [](FakeBody &body) {
             body.send(delta("a") + R"({"type":"delta","text":"b"})");
             body.breakOff(Code::timedOut);
         },
         u"a"_s, late},
        {"an error with words",
         [](FakeBody &body) {
             body.send(delta("a") + R"({"type":"error","message":"No more today."})" + "\n" +
                       delta("b") + done());
         },
         u"a"_s, u"No more today."_s},
        {"an error without words", [](FakeBody &body) { body.send(R"({"type":"error"})"); }, u""_s,
         u"chat error"_s},
        {"a line that is no JSON",
         [](FakeBody &body) { body.send(delta("a") + "data: {}\n" + done()); }, u"a"_s, unreadable},
        {"a line without a type", [](FakeBody &body) { body.send("{\"text\":\"b\"}\n" + done()); },
         u""_s, unreadable},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        store.newChat();
        const auto saves = system.files.written().size();
        const auto body = ask(u"Why?"_s);
        row.happen(*body);
        body->end();
        ASSERT_TRUE(idle());
        settleEventLoop();
        EXPECT_EQ(answer().content, row.content);
        EXPECT_EQ(store.chatErrorText().toStdString(), row.error.toStdString());
        EXPECT_EQ(store.messageCount(), 2) << "nothing is taken back";
        EXPECT_EQ(store.library().conversations.first(), store.chat());
        EXPECT_EQ(system.files.written().size(), saves + 1);
        EXPECT_FALSE(body->isOpen());
    }
}

TEST_F(ChatSession, aRunThatNeverBeginsEndsTheSameWay) {
    store.startChat(u"Why?"_s);
    ASSERT_TRUE(waitsForAnswer());
    system.transport.fail(path(), URLError::Code::cannotConnectToHost);
    ASSERT_TRUE(idle());
    EXPECT_TRUE(store.chatErrorText().startsWith(u"The service is not answering"_s));
    EXPECT_EQ(answer().content, u""_s);

    store.startChat(u"And now?"_s);
    ASSERT_TRUE(waitsForAnswer());
    EXPECT_EQ(store.chatError(), std::nullopt) << "a new question clears the failure";
    EXPECT_EQ(lastBody()[u"messages"].toArray().size(), 2) << "the failed one goes along";
    const auto refusal = system.transport.answerHead(path(), 429);
    refusal->send(R"({"error":"quota_used","message":"Come back tomorrow."})");
    refusal->end();
    ASSERT_TRUE(idle());
    EXPECT_EQ(store.chatError(), u"Come back tomorrow."_s);
    EXPECT_EQ(store.messageCount(), 4);
    EXPECT_EQ(store.library().conversations.size(), 1);
    EXPECT_EQ(pending().size(), 1);
}

TEST_F(ChatSession, whatCannotBeAskedChangesNothing) {
    const auto before = store.chat();
    for (const auto &blank : {u""_s, u" \n\t\u00A0\u2029"_s}) {
        store.startChat(blank);
        EXPECT_EQ(store.chatError(), std::nullopt);
    }
    signIn(std::nullopt);
    store.startChat(u"Why?"_s);
    EXPECT_EQ(store.chatError(), store.text(u"askSigninMessage"_s));
    EXPECT_FALSE(store.isChatting());
    EXPECT_EQ(store.chat(), before);

    signIn(u"user"_s);
    const auto body = ask(u"Why?"_s);
    const auto running = store.chat();
    store.setSelectedArchives({u"lumen"_s});
    store.startChat(u"And why else?"_s);
    settleEventLoop();
    EXPECT_EQ(store.chat(), running);
    EXPECT_EQ(asked(), 1);
}

TEST_F(ChatSession, theCasesOfTheLastAnswerOrTheGivenOnesGoAlong) {
    const auto cited = [this] {
        QStringList ids;
        for (const auto &cited : lastBody()[u"cases"].toArray())
            ids.append(cited.toObject()[u"id"].toString());
        return ids;
    };
    CaseCard given;
    given.id = u"9"_s;
    auto body = ask(u"What of this?"_s, {given});
    EXPECT_EQ(cited(), QStringList{u"9"_s});
    EXPECT_EQ(lastBody()[u"messages"].toArray().size(), 1);
    EXPECT_EQ(store.messageCount(), 2) << "the evidence is no part of the conversation";
    body->send(R"({"type":"references","items":[)" + card("1") + "," + card("2") + "]}\n" + done());
    body->end();
    ASSERT_TRUE(idle());
    body = ask(u"And then?"_s);
    EXPECT_EQ(cited(), (QStringList{u"1"_s, u"2"_s}));
    EXPECT_EQ(lastBody()[u"messages"].toArray().size(), 2);
}

TEST_F(ChatSession, aStopAtAnyStageKeepsWhatCameAndVoidsTheRest) {
    struct Stage {
        const char *name;
        bool sent;
        bool answered;
        bool streaming;
    };
    for (const auto &stage : {Stage{"before the first step", false, false, false},
                              Stage{"before the head", true, false, false},
                              Stage{"before the first line", true, true, false},
                              Stage{"in the middle", true, true, true}}) {
        SCOPED_TRACE(stage.name);
        store.newChat();
        store.startChat(u"Why?"_s);
        std::shared_ptr<FakeBody> body;
        if (stage.sent) {
            ASSERT_TRUE(waitsForAnswer());
        }
        if (stage.answered) {
            body = system.transport.answerHead(path());
            settleEventLoop();
        }
        if (stage.streaming) {
            body->send(delta("a") + "{\"type\":\"progress\",\"summary\":\"Reading\"}\n");
            ASSERT_TRUE(received(u"a"_s));
            body->send(delta("late") + "{\"type\":\"error\"}\n");
        }
        const auto requests = asked();
        store.stopChat();
        EXPECT_FALSE(store.isChatting());
        EXPECT_EQ(store.chatProgress(), std::nullopt);
        const auto stopped = store.chat();
        EXPECT_EQ(store.library().conversations.first(), stopped);
        settleEventLoop();
        EXPECT_EQ(answer().content, stage.streaming ? u"a"_s : u""_s);
        EXPECT_EQ(store.chat(), stopped);
        EXPECT_EQ(store.chatError(), std::nullopt);
        EXPECT_EQ(asked(), requests);
        EXPECT_TRUE(!body || !body->isOpen());

        // A stop without a run saves nothing.
        const auto saves = system.files.written().size();
        store.stopChat();
        EXPECT_EQ(system.files.written().size(), saves);
    }
}

TEST_F(ChatSession, aRunWhoseGroundHasChangedTouchesNothing) {
    struct Change {
        const char *name;
        std::function<void()> happen;
    };
    Conversation other;
    other.title = u"Other"_s;
    const std::vector<Change> changes = {
        {"another user", [this] { StoreAccess::setAccount(store, u"other"_s); }},
        {"a newer run of the next conversation",
         [this] {
             store.newChat();
             store.startChat(u"Newer?"_s);
         }},
        {"another conversation", [&] { store.openChat(other); }},
        {"its own removal", [this] { store.deleteConversation(store.chat()); }},
    };
    for (const auto &change : changes) {
        SCOPED_TRACE(change.name);
        const auto body = ask(u"Why?"_s);
        body->send(delta("a"));
        ASSERT_TRUE(received(u"a"_s));
        body->send(delta("late") + "{\"type\":\"progress\",\"summary\":\"Late\"}\n" + done());
        change.happen();
        const auto chat = store.chat();
        const auto library = store.library();
        body->end();
        settleEventLoop();
        EXPECT_EQ(store.chat(), chat);
        EXPECT_EQ(store.library(), library);
        EXPECT_EQ(store.chatError(), std::nullopt);
        EXPECT_EQ(store.chatProgress(), std::nullopt);
        EXPECT_FALSE(body->isOpen());
        store.stopChat();
        signIn(u"user"_s);
        store.newChat();
        settleEventLoop();
    }
}

TEST_F(ChatSession, theBaseOfAnEditIsWhatWasKnownWhenItWasAsked) {
    askAndReceive(u"Why?"_s, "a");
    EXPECT_EQ(pending().last().baseVersion, 0);
    setVersion(store.chat(), 3);
    const auto body = ask(u"And then?"_s);
    setVersion(store.chat(), 7);
    body->send(done());
    body->end();
    ASSERT_TRUE(idle());
    EXPECT_EQ(pending().size(), 1);
    EXPECT_EQ(pending().last().baseVersion, 3);
    EXPECT_EQ(pending().last().conversation, store.chat());

    signIn(std::nullopt);
    store.saveChat();
    EXPECT_FALSE(store.library().sync) << "nothing is queued for a guest";
    EXPECT_EQ(store.library().conversations.size(), 1);
}

TEST_F(ChatSession, aGrowingAnswerIsToldOfOnceInAFrame) {
    const auto *model = store.messageModel();
    QSignalSpy inserted(model, &QAbstractItemModel::rowsInserted);
    QSignalSpy reset(model, &QAbstractItemModel::modelReset);
    QSignalSpy changed(model, &QAbstractItemModel::dataChanged);
    const auto shown = [&] { return model->index(1, 0).data(MessageModel::content).toString(); };
    const auto body = ask(u"Why?"_s);
    EXPECT_EQ(inserted.count(), 2);

    body->send(delta("a"));
    ASSERT_TRUE(received(u"a"_s));
    EXPECT_EQ(changed.count(), 1) << "the first piece at once";
    for (int frame = 0; frame < 3; ++frame) {
        QByteArray pieces;
        for (int piece = 0; piece < 50; ++piece)
            pieces += delta("b");
        body->send(pieces);
        const auto whole = answer().content + QString(50, u'b');
        ASSERT_TRUE(received(whole)) << "the state is exact";
        EXPECT_EQ(changed.count(), 1 + frame);
        ASSERT_TRUE(eventually([this] { return system.clock.sleepers() == 1; }));
        system.clock.advance(FramePace::frame);
        ASSERT_TRUE(eventually([&] { return shown() == whole; }));
        EXPECT_EQ(changed.count(), 2 + frame);
        EXPECT_EQ(changed.last().at(2).value<QList<int>>(), QList<int>{MessageModel::content});
    }
    ASSERT_TRUE(eventually([this] { return system.clock.sleepers() == 1; }));
    system.clock.advance(FramePace::frame);
    settleEventLoop();
    EXPECT_EQ(system.clock.sleepers(), 0) << "nothing runs while nothing comes";

    body->send(delta("c") + delta("d") + R"({"type":"references","items":[]})" + "\n");
    ASSERT_TRUE(eventually([&] { return changed.count() == 7; })) << "the rest at once";
    EXPECT_TRUE(shown().endsWith(u"cd"_s));
    body->send(delta("e") + done());
    body->end();
    ASSERT_TRUE(idle());
    EXPECT_TRUE(shown().endsWith(u"cde"_s));
    EXPECT_EQ(changed.count(), 8);
    EXPECT_EQ(reset.count(), 0);
}

TEST_F(ChatSession, aStoreMayGoWhileAnAnswerComes) {
    const auto body = ask(u"Why?"_s);
    body->send(delta("a") + delta("b"));
    ASSERT_TRUE(received(u"ab"_s));
    body->send(delta("late"));
    dropStore();
    settleEventLoop();
    EXPECT_FALSE(body->isOpen());
}
