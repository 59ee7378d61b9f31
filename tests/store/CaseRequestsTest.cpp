#include "tests/store/ChatTest.h"

using namespace Qt::StringLiterals;

namespace {

class CaseRequests : public ChatTest {
protected:
    CaseRequests() { askAndReceive(u"First?"_s, "a"); }

    QString requestPath() const { return QLatin1Char('/') + QString(Endpoint::requestCases); }
    QString key(const QString &archive) { return store.chat().id.text + u'|' + archive; }

    /// The request of one archive, answered.
    void request(const QString &archive, const QByteArray &reply) {
        auto task = store.requestMoreCases(archive);
        system.transport.answer(requestPath(), 200, reply);
        await(std::move(task));
    }
};

class SavedCases : public ChatTest {
protected:
    static CaseCard cardOf(const QString &id) {
        CaseCard card;
        card.id = id;
        card.key = u"foible:1"_s;
        return card;
    }
};

} // namespace

TEST_F(CaseRequests, goOnceForEachConversationAndArchive) {
    askAndReceive(u"Second?"_s, "b");
    auto task = store.requestMoreCases(u"lumen"_s);
    EXPECT_EQ(store.requestingCases(), QSet<QString>{key(u"lumen"_s)});
    EXPECT_EQ(lastBody(), (QJsonObject{{u"archive"_s, u"lumen"_s}, {u"question"_s, u"First?"_s}}));
    await(store.requestMoreCases(u"lumen"_s));
    system.transport.answer(requestPath(), 200, R"({"queued":true})");
    await(std::move(task));
    EXPECT_EQ(store.notice(), store.text(u"askRequested"_s));
    EXPECT_EQ(store.requestedCases(), QSet<QString>{key(u"lumen"_s)});
    EXPECT_TRUE(store.requestingCases().isEmpty());

    store.dismissNotice();
    await(store.requestMoreCases(u"lumen"_s));
    await(store.requestMoreCases(u"elsewhere"_s));
    EXPECT_EQ(store.notice(), std::nullopt);
    request(u"foible"_s, R"({"queued":false,"duplicate":true})");
    EXPECT_EQ(store.requestedCases().size(), 2);

    store.newChat();
    await(store.requestMoreCases(u"lumen"_s));
    askAndReceive(u"Third?"_s, "c");
    request(u"lumen"_s, R"({"queued":true,"duplicate":false})");
    EXPECT_EQ(store.requestedCases().size(), 3);
    EXPECT_EQ(asked(), 6);
}

TEST_F(CaseRequests, aFailureMayBeTriedAgain) {
    for (const auto *reply : {R"({"queued":false})", R"({"queued":false,"duplicate":false})",
                              R"({"duplicate":true})"}) {
        store.dismissNotice();
        request(u"lumen"_s, reply);
        EXPECT_TRUE(store.notice()) << reply;
        EXPECT_TRUE(store.requestedCases().isEmpty());
        EXPECT_TRUE(store.requestingCases().isEmpty());
    }
    auto task = store.requestMoreCases(u"lumen"_s);
    system.transport.answer(requestPath(), 409, R"({"error":"too_soon"})");
    await(std::move(task));
    EXPECT_EQ(store.notice(), u"too soon"_s);
}

TEST_F(CaseRequests, areNoneOfTheNextAccount) {
    for (const bool answered : {true, false}) {
        auto task = store.requestMoreCases(u"lumen"_s);
        signIn(answered ? std::optional<QString>() : u"other"_s);
        if (answered)
            system.transport.answer(requestPath(), 200, R"({"queued":true})");
        else
            system.transport.fail(requestPath(), URLError::Code::timedOut);
        await(std::move(task));
        EXPECT_EQ(store.notice(), std::nullopt);
        EXPECT_TRUE(store.requestedCases().isEmpty());
        EXPECT_TRUE(store.requestingCases().isEmpty());
        signIn(std::nullopt);
        await(store.requestMoreCases(u"lumen"_s));
        signIn(u"user"_s);
    }
}

TEST_F(SavedCases, areTogglesOfAKeyAlone) {
    auto &library = StoreAccess::library(store);
    library.saved = {cardOf(u"other"_s)};
    library.saved[0].key = u"lumen:1"_s;
    store.toggle(cardOf(u"1"_s));
    EXPECT_TRUE(store.saved(cardOf(u"anything"_s)));
    EXPECT_EQ(library.saved.first().id, u"1"_s) << "at the front";
    ASSERT_EQ(pending().size(), 1);
    EXPECT_FALSE(pending()[0].deleted);
    EXPECT_EQ(pending()[0].card, cardOf(u"1"_s));

    store.toggle(cardOf(u"2"_s));
    EXPECT_FALSE(store.saved(cardOf(u"1"_s)));
    EXPECT_EQ(library.saved.size(), 1);
    ASSERT_EQ(pending().size(), 1);
    EXPECT_TRUE(pending()[0].deleted);
    EXPECT_EQ(pending()[0].key, u"foible:1"_s);
    EXPECT_EQ(system.files.written().size(), 4)
        << "the load of an account, its wall, and each toggle";
}

TEST_F(SavedCases, ofAGuestAreWrittenAndNotQueued) {
    signIn(std::nullopt);
    const auto saves = system.files.written().size();
    store.toggle(cardOf(u"1"_s));
    EXPECT_TRUE(store.saved(cardOf(u"1"_s)));
    EXPECT_FALSE(store.library().sync);
    EXPECT_EQ(system.files.written().size(), saves + 1);
}
