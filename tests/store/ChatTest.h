#pragma once

#include "service/Endpoints.h"
#include "store/AppStore.h"
#include "tests/store/StoreAccess.h"
#include "tests/support/Await.h"
#include "tests/support/FakeTransport.h"
#include "tests/support/TestPlatform.h"

#include <gtest/gtest.h>

#include <memory>

/// A signed-in store whose questions the test answers.
class ChatTest : public testing::Test {
protected:
    ChatTest() { signIn(QStringLiteral("user")); }
    ~ChatTest() override {
        m_store.reset();
        // What waited for the store ends in a turn of its own.
        settleEventLoop();
    }
    Q_DISABLE_COPY_MOVE(ChatTest)

    AppStore &store() { return *m_store; }
    void dropStore() { m_store.reset(); }

    void signIn(const std::optional<QString> &user) {
        StoreAccess::setAccount(*m_store, user);
        m_store->loadLibrary();
    }

    bool waitsForAnswer() {
        return eventually([this] { return system.transport.waiting(path()) > 0; });
    }

    /// Asks, and answers with a head.
    std::shared_ptr<FakeBody> ask(const QString &question, const QList<CaseCard> &evidence = {}) {
        m_store->startChat(question, evidence);
        EXPECT_TRUE(waitsForAnswer());
        return system.transport.answerHead(path());
    }

    /// Asks and lets the whole answer through.
    void askAndReceive(const QString &question, const QByteArray &answer) {
        const auto body = ask(question);
        body->send(delta(answer) + done());
        body->end();
        EXPECT_TRUE(eventually([this] { return !m_store->isChatting(); }));
    }

    static QByteArray delta(const QByteArray &text) {
        return R"({"type":"delta","text":")" + text + "\"}\n";
    }
    static QByteArray done() { return "{\"type\":\"done\"}\n"; }
    static QByteArray card(const QByteArray &id) {
        return R"({"id":")" + id + R"(","key":"foible:)" + id +
               R"(","archive":"foible","title":"T","summary":"S","category":"","era":"1900",)"
               R"("locale":"en"})";
    }

    const ChatMessage &answer() const { return m_store->chat().messages.last(); }

    /// The request bodies of all runs so far.
    QByteArray lastBody() const { return *system.transport.requests().back().body; }

    QList<LibraryChange> pending() const { return m_store->library().sync.value().pending; }

    void setVersion(const Conversation &conversation, qint64 version) {
        StoreAccess::library(*m_store)
            .sync->versions[QLatin1String("conversation|") + conversation.id.text] = version;
    }

    static QString path() { return QLatin1Char('/') + QString(Endpoint::chatRuns); }

    TestPlatform<FakeTransport> system;

private:
    std::unique_ptr<AppStore> m_store = std::make_unique<AppStore>(system.platform());
};
