#pragma once

#include "service/Endpoints.h"
#include "tests/store/StoreTest.h"

#include <memory>

/// A signed-in store whose questions the test answers.
class ChatTest : public StoreTest {
protected:
    static inline const QString wallPath = QStringLiteral("/v1/wall");
    static inline const QString quotaPath = QStringLiteral("/v1/account/quota");

    ChatTest() {
        system.transport.always(wallPath, HttpResponse{200, R"({"items":[]})"});
        system.transport.always(quotaPath, HttpResponse{200, R"({"plan":"free","used":1})"});
        signIn(QStringLiteral("user"));
    }

    void signIn(const std::optional<QString> &user) {
        StoreAccess::setAccount(store, user);
        StoreAccess::setSyncing(store);
        store.loadLibrary();
        settleEventLoop();
    }

    bool waitsForAnswer() {
        return eventually([this] { return system.transport.waiting(path()) > 0; });
    }

    /// Asks, and answers with a head.
    std::shared_ptr<FakeBody> ask(const QString &question, const QList<CaseCard> &evidence = {}) {
        store.startChat(question, evidence);
        EXPECT_TRUE(waitsForAnswer());
        return system.transport.answerHead(path());
    }

    /// Asks and lets the whole answer through.
    void askAndReceive(const QString &question, const QByteArray &answer) {
        const auto body = ask(question);
        body->send(delta(answer) + done());
        body->end();
        EXPECT_TRUE(eventually([this] { return !store.isChatting(); }));
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

    const ChatMessage &answer() const { return store.chat().messages.last(); }

    /// How many requests there were, those of the wall and the quota left out.
    qsizetype asked() const {
        const auto &requests = system.transport.requests();
        return std::count_if(requests.begin(), requests.end(), [](const HttpRequest &request) {
            return request.url.path() != wallPath && request.url.path() != quotaPath;
        });
    }

    QList<LibraryChange> pending() const { return store.library().sync.value().pending; }

    /// As if the service had taken every edit of the conversation so far.
    void setVersion(const Conversation &conversation, qint64 version) {
        auto &sync = *StoreAccess::library(store).sync;
        sync.pending.removeIf(
            [&](const LibraryChange &change) { return change.key == conversation.id.text; });
        sync.versions[QLatin1String("conversation|") + conversation.id.text] = version;
    }

    static QString path() { return QLatin1Char('/') + QString(Endpoint::chatRuns); }
};
