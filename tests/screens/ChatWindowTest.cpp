#include "tests/screens/OpenWindow.h"
#include "tests/store/ChatTest.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

class ChatWindowTest : public ChatTest {
protected:
    ChatWindowTest() {
        for (const auto *path : {"/v1/health", "/v1/archives", "/v1/search", "/v1/account"})
            system.transport.always(QLatin1String(path), HttpResponse{500, "{}"});
        store.setDestination(u"chat"_s);
        m_window = std::make_unique<OpenWindow>(store);
        settleEventLoop();
        store.dismissNotice();
        settleEventLoop();
    }

    OpenWindow &window() { return *m_window; }
    QQuickItem *field() const {
        return m_window->window()->findChild<QQuickItem *>(u"chat-prompt"_s);
    }
    QString typed() const { return field()->property("text").toString(); }

private:
    std::unique_ptr<OpenWindow> m_window;
};

} // namespace

TEST_F(ChatWindowTest, theKeyboardWritesAsksAndLeavesTheField) {
    ASSERT_NE(field(), nullptr);
    ASSERT_TRUE(window().press(text("askExamples.foible.1")));
    EXPECT_EQ(typed(), text("askExamples.foible.1"));
    EXPECT_TRUE(field()->hasActiveFocus());
    EXPECT_EQ(store.messageCount(), 0) << "an example is not sent by itself";
    window().press(Qt::Key_Z, Qt::ControlModifier);
    EXPECT_EQ(typed(), QString());

    window().press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(store.messageCount(), 0);
    QGuiApplication::clipboard()->setText(u"Why\nso?"_s);
    window().press(Qt::Key_V, Qt::ControlModifier);
    window().press(Qt::Key_Return);
    EXPECT_EQ(typed(), u"Why\nso?\n"_s);
    window().press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(store.chat().messages.value(0).content, u"Why\nso?"_s);
    EXPECT_EQ(typed(), QString());

    // The question that waits for the end of the answer stays.
    window().press(Qt::Key_A);
    window().press(Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(typed(), u"a"_s);
    window().press(Qt::Key_Tab);
    EXPECT_FALSE(field()->hasActiveFocus());
    EXPECT_EQ(typed(), u"a"_s);
    EXPECT_TRUE(window().press(text("stop")));
    EXPECT_FALSE(store.isChatting());
}

TEST_F(ChatWindowTest, aGrowingAnswerKeepsItsTextItemAndTheSelectionInIt) {
    const auto body = ask(u"Why?"_s);
    body->send(delta("One **two** three"));
    const auto answer = [&] { return window().ofType("AnswerText").value(0); };
    ASSERT_TRUE(eventually([&] { return answer() != nullptr; }));
    auto *first = answer();
    ASSERT_TRUE(QMetaObject::invokeMethod(first, "select", Q_ARG(int, 4), Q_ARG(int, 7)));
    for (int piece = 0; piece < 50; ++piece)
        body->send(delta(" and more"));
    body->send(done());
    body->end();
    ASSERT_TRUE(eventually([&] { return !store.isChatting(); }));
    EXPECT_EQ(answer(), first);
    EXPECT_EQ(first->property("selectedText").toString(), u"two"_s);
    EXPECT_TRUE(eventually([&] { return window().shows(text("answerArrived")); }));
    ASSERT_TRUE(window().press(text("copy")));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"Why?"_s) << "the first of the two";
}

TEST_F(ChatWindowTest, twoCitedCasesStandSideBySide) {
    const auto body = ask(u"Why?"_s);
    body->send(R"({"type":"references","items":[)" + card("a") + ',' + card("b") + "]}\n" + done());
    body->end();
    const auto cards = [&] { return window().ofType("CitationCard"); };
    EXPECT_TRUE(eventually([&] {
        return cards().size() == 2 && cards()[0]->width() >= 250 &&
               cards()[1]->x() == cards()[0]->x() + cards()[0]->width() + 14;
    }));
}

TEST_F(ChatWindowTest, aLongConversationMakesOnlyWhatIsInSight) {
    Conversation conversation;
    for (int at = 0; at < 200; ++at) {
        conversation.messages.append(
            ChatMessage::make(at % 2 == 0 ? ChatMessage::user : ChatMessage::assistant,
                              u"A sentence of the talk. "_s.repeated(40)));
    }
    store.openChat(conversation);
    EXPECT_TRUE(eventually([&] { return !window().ofType("MessageBlock").isEmpty(); }));
    EXPECT_LT(window().ofType("MessageBlock").size(), 40);
    store.startChat(u"And now?"_s);
    ASSERT_TRUE(waitsForAnswer());
    EXPECT_TRUE(eventually([&] { return window().shows(u"And now?"_s); }));
}
