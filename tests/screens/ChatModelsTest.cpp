#include "screens/AnswerAnnouncement.h"
#include "screens/ChatArchives.h"
#include "screens/Citations.h"
#include "screens/ExampleQuestions.h"
#include "screens/PromptModel.h"
#include "tests/screens/ModelColumn.h"
#include "tests/store/ChatTest.h"

using namespace Qt::StringLiterals;

namespace {

class ChatModelsTest : public ChatTest {
protected:
    ChatModelsTest() {
        prompt.setStore(&store);
        examples.setStore(&store);
        archives.setStore(&store);
        announcement.setStore(&store);
    }

    void fetchQuota(const QByteArray &reply) {
        system.transport.always(quotaPath, HttpResponse{200, reply});
        await(store.refreshQuota());
    }

    PromptModel prompt;
    ExampleQuestions examples;
    ChatArchives archives;
    AnswerAnnouncement announcement;
};

} // namespace

TEST_F(ChatModelsTest, whatCannotBeSentStays) {
    for (const auto &nothing : {u""_s, u" \n\u2003 "_s}) {
        prompt.setPrompt(nothing);
        EXPECT_FALSE(prompt.isSendable());
        prompt.send();
        EXPECT_EQ(prompt.prompt(), nothing);
    }
    prompt.setPrompt(u"  Why?\n"_s);
    EXPECT_TRUE(prompt.isSendable());
    prompt.send();
    EXPECT_EQ(prompt.prompt(), QString());
    EXPECT_EQ(store.chat().messages.first().content, u"Why?"_s);

    prompt.setPrompt(u"And then?"_s);
    EXPECT_FALSE(prompt.isSendable()) << "an answer is under way";
    prompt.send();
    EXPECT_EQ(prompt.prompt(), u"And then?"_s);
    store.stopChat();
    EXPECT_TRUE(prompt.isSendable());

    StoreAccess::setAccount(store, std::nullopt);
    EXPECT_FALSE(prompt.isSendable());
    prompt.send();
    EXPECT_EQ(prompt.prompt(), u"And then?"_s);
    EXPECT_EQ(store.chatError(), std::nullopt);
}

TEST_F(ChatModelsTest, examplesAndPlaceholderAreOfTheOneSelectedArchive) {
    EXPECT_EQ(prompt.placeholder(), text("archive.ph.foible"));
    EXPECT_EQ(examples.questions(),
              QStringList({text("askExamples.foible.0"), text("askExamples.foible.1"),
                           text("askExamples.foible.2")}));
    store.setSelectedArchives({u"lumen"_s});
    EXPECT_EQ(prompt.placeholder(), text("archive.ph.lumen"));
    examples.shuffle();
    examples.shuffle();
    EXPECT_EQ(examples.questions().last(), text("askExamples.lumen.8"));
    examples.shuffle();
    EXPECT_EQ(examples.questions().first(), text("askExamples.lumen.0"));
    store.setSelectedArchives({u"lumen"_s, u"shift"_s});
    EXPECT_EQ(examples.questions().first(), text("askExamples.foible.0"));

    askAndReceive(u"Why?"_s, "a");
    EXPECT_EQ(prompt.placeholder(), text("askFollowUpPlaceholder"));
}

TEST_F(ChatModelsTest, pillsMixAndAreSetOnceTheConversationHasBegun) {
    const auto selected = [&] {
        QStringList result;
        auto *pills = archives.pills();
        for (int row = 0; row < pills->rowCount(); ++row) {
            if (pills->index(row, 0).data(ArchivePillModel::selected).toBool())
                result += pills->index(row, 0).data(ArchivePillModel::archive).toString();
        }
        return result;
    };
    EXPECT_EQ(selected(), QStringList{QString()}) << "all of them";
    archives.toggle(u"shift"_s);
    archives.toggle(u"lumen"_s);
    EXPECT_EQ(selected(), QStringList({u"lumen"_s, u"shift"_s}));
    archives.toggle(u"shift"_s);
    EXPECT_EQ(selected(), QStringList{u"lumen"_s});
    archives.toggle(QString());
    EXPECT_EQ(store.selectedArchives(), QStringList());

    archives.toggle(u"makers"_s);
    const auto body = ask(u"Why?"_s);
    archives.toggle(QString());
    store.stopChat();
    archives.toggle(u"shift"_s);
    EXPECT_EQ(store.selectedArchives(), QStringList{u"makers"_s});
}

TEST_F(ChatModelsTest, quotaLineTellsWhatIsLeft) {
    struct Case {
        QByteArray reply;
        QString line;
    };
    EXPECT_EQ(prompt.quotaLine(), QString());
    for (const auto &[reply, line] : {
             Case{R"({"plan":"free","used":3,"limit":10})", u"7 of 10 questions left"_s},
             Case{R"({"plan":"free","used":12,"limit":10})", u"0 of 10 questions left"_s},
             Case{R"({"plan":"Pro","used":0,"limit":5})", u"5 of 5 questions left"_s},
             Case{R"({"plan":"pro","used":7,"limit":5})", text("askUnlimited")},
         }) {
        fetchQuota(reply);
        EXPECT_EQ(prompt.quotaLine(), line) << reply.constData();
    }
}

TEST_F(ChatModelsTest, requestsAreOfTheSelectedArchivesAndOnceEach) {
    EXPECT_EQ(column(*archives.requests(), CaseRequestModel::archive).size(), 5);
    store.setSelectedArchives({u"shift"_s, u"lumen"_s});
    askAndReceive(u"Why?"_s, "a");
    EXPECT_EQ(column(*archives.requests(), CaseRequestModel::archive),
              QStringList({u"lumen"_s, u"shift"_s}));
    EXPECT_EQ(column(*archives.requests(), CaseRequestModel::open),
              QStringList({u"true"_s, u"true"_s}));

    store.beginRequestMoreCases(u"shift"_s);
    const auto requestPath = QLatin1Char('/') + QString(Endpoint::requestCases);
    ASSERT_TRUE(eventually([&] { return system.transport.waiting(requestPath) > 0; }));
    EXPECT_EQ(column(*archives.requests(), CaseRequestModel::open),
              QStringList({u"true"_s, u"false"_s}));
    system.transport.answer(requestPath, 200, R"({"queued":true})");
    settleEventLoop();
    EXPECT_TRUE(column(*archives.requests(), CaseRequestModel::label).last().endsWith(u" ✓"_s));
    EXPECT_EQ(column(*archives.requests(), CaseRequestModel::open),
              QStringList({u"true"_s, u"false"_s}));

    store.newChat();
    EXPECT_EQ(column(*archives.requests(), CaseRequestModel::open),
              QStringList({u"true"_s, u"true"_s}))
        << "another conversation asks anew";
}

TEST_F(ChatModelsTest, citationsFollowTheirMessage) {
    Citations citations;
    citations.setMessages(store.messageModel());
    citations.setRow(1);
    const auto body = ask(u"Why?"_s);
    EXPECT_EQ(citations.count(), 0);
    body->send(R"({"type":"references","items":[)" + card("a").chopped(1) + R"(,"strong":false},)" +
               card("b").chopped(1) + R"(,"strong":true,"note":"N"},)" + card("c") + "]}\n");
    ASSERT_TRUE(eventually([&] { return citations.count() == 3; }));
    EXPECT_EQ(column(*citations.cards(), CitationModel::weak),
              QStringList({u"true"_s, u"false"_s, u"false"_s}));
    EXPECT_EQ(column(*citations.cards(), CitationModel::reason),
              QStringList({u"S"_s, u"N"_s, u"S"_s}));
    store.newChat();
    citations.setRow(0);
    EXPECT_EQ(citations.count(), 0);
}

TEST_F(ChatModelsTest, aScreenReaderIsToldOnceHowAQuestionEnded) {
    QStringList told;
    QObject::connect(&announcement, &AnswerAnnouncement::wordsChanged,
                     [&] { told += announcement.words(); });
    auto body = ask(u"Why?"_s);
    for (int piece = 0; piece < 5; ++piece) {
        body->send(delta("piece"));
        settleEventLoop();
    }
    EXPECT_TRUE(told.isEmpty());
    body->send(done());
    body->end();
    ASSERT_TRUE(eventually([&] { return !told.isEmpty(); }));
    EXPECT_EQ(told, QStringList{text("answerArrived")});

    body = ask(u"And?"_s);
    body->send("{\"type\":\"error\",\"message\":\"Too much.\"}\n");
    ASSERT_TRUE(eventually([&] { return announcement.words() == u"Too much."_s; }));

    // Whoever stops an answer or leaves it knows.
    told.clear();
    body = ask(u"Once more?"_s);
    body->send(delta("piece"));
    settleEventLoop();
    announcement.stop();
    settleEventLoop();
    body = ask(u"And again?"_s);
    settleEventLoop();
    store.newChat();
    settleEventLoop();
    EXPECT_EQ(told, QStringList{QString()});
}
