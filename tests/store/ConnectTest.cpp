#include "store/AppStore.h"
#include "tests/store/SampleCatalogue.h"
#include "tests/support/Await.h"
#include "tests/support/FakeTransport.h"
#include "tests/support/TestPlatform.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class Connect : public testing::Test {
protected:
    void answerHealth(qint64 total = 2400) {
        system.transport.answer(u"/v1/health"_s, 200, SampleCatalogue::healthBody(total));
    }
    void answerArchives(const QList<Archive> &archives = SampleCatalogue::archives()) {
        system.transport.answer(u"/v1/archives"_s, 200, SampleCatalogue::archivesBody(archives));
    }

    TestPlatform<FakeTransport> system;
    AppStore store{system.platform()};
};

} // namespace

TEST_F(Connect, asksForHealthAndArchivesSideBySide) {
    store.setLanguage(AppLanguage::ptBR);
    auto connecting = store.connect();
    EXPECT_TRUE(store.isConnecting());
    ASSERT_EQ(system.transport.requests().size(), 2U) << "before either is answered";
    const auto &health = system.transport.requests()[0];
    const auto &archives = system.transport.requests()[1];
    EXPECT_EQ(health.url.toEncoded(), "http://127.0.0.1:4310/v1/health");
    EXPECT_EQ(archives.url.toEncoded(), "http://127.0.0.1:4310/v1/archives?locale=pt-BR");
    for (const auto &request : {health, archives}) {
        EXPECT_EQ(request.method, "GET");
        EXPECT_TRUE(request.headers.empty());
    }
    answerHealth();
    answerArchives();
    await(std::move(connecting));
}

TEST_F(Connect, publishesBothTogetherInWhateverOrderTheyCome) {
    for (const bool healthFirst : {true, false}) {
        SCOPED_TRACE(healthFirst);
        AppStore fresh(system.platform());
        QStringList order;
        QObject::connect(&fresh, &AppStore::healthChanged, [&] { order.append(u"health"_s); });
        QObject::connect(&fresh, &AppStore::archivesChanged, [&] { order.append(u"archives"_s); });
        QObject::connect(&fresh, &AppStore::connectingChanged,
                         [&] { order.append(fresh.isConnecting() ? u"begin"_s : u"end"_s); });

        auto connecting = fresh.connect();
        healthFirst ? answerHealth() : answerArchives();
        settleEventLoop();
        EXPECT_EQ(order, QStringList{u"begin"_s});
        EXPECT_FALSE(fresh.isConnected());
        EXPECT_TRUE(fresh.archives().isEmpty());

        healthFirst ? answerArchives() : answerHealth();
        await(std::move(connecting));
        EXPECT_EQ(order, (QStringList{u"begin"_s, u"health"_s, u"archives"_s, u"end"_s}));
        EXPECT_EQ(fresh.health(), SampleCatalogue::health());
        EXPECT_EQ(fresh.archives(), SampleCatalogue::archives());
        EXPECT_EQ(fresh.archiveTotal(), 75);
        EXPECT_EQ(fresh.lead().id, u"foible"_s);
        EXPECT_EQ(fresh.notice(), std::nullopt);
        EXPECT_FALSE(fresh.isConnecting());
    }
}

TEST_F(Connect, aHealthThatIsNotWellIsStillAConnection) {
    auto connecting = store.connect();
    auto health = SampleCatalogue::health(0);
    health.ok = false;
    system.transport.answer(u"/v1/health"_s, 200, Json::encode(health));
    answerArchives({});
    await(std::move(connecting));
    EXPECT_TRUE(store.isConnected());
    EXPECT_TRUE(store.archives().isEmpty());
}

TEST_F(Connect, beginsInALaterTurn) {
    store.beginConnect();
    EXPECT_FALSE(store.isConnecting());
    EXPECT_TRUE(system.transport.requests().empty());
    settleEventLoop();
    EXPECT_TRUE(store.isConnecting());
    answerHealth();
    answerArchives();
    EXPECT_TRUE(eventually([&] { return !store.isConnecting(); }));
    EXPECT_TRUE(store.isConnected());
}

TEST_F(Connect, againReplacesTheCatalogueAndSignalsOnlyWhatChanged) {
    auto first = store.connect();
    answerHealth();
    answerArchives();
    await(std::move(first));

    const QSignalSpy healthChanges(&store, &AppStore::healthChanged);
    const QSignalSpy archivesChanges(&store, &AppStore::archivesChanged);
    auto same = store.connect();
    answerHealth();
    answerArchives();
    await(std::move(same));
    EXPECT_EQ(healthChanges.size(), 0);
    EXPECT_EQ(archivesChanges.size(), 0);

    auto other = store.connect();
    answerHealth(1);
    answerArchives({SampleCatalogue::archive(u"makers"_s)});
    await(std::move(other));
    EXPECT_EQ(healthChanges.size(), 1);
    EXPECT_EQ(archivesChanges.size(), 1);
    EXPECT_EQ(store.health(), SampleCatalogue::health(1));
    EXPECT_EQ(store.lead().id, u"makers"_s);
}

TEST_F(Connect, aRunOfAFormerGenerationPublishesNothing) {
    struct Outcome {
        const char *name;
        std::function<void()> happen;
    };
    const std::vector<Outcome> outcomes = {
        {"success",
         [this] {
             answerHealth();
             answerArchives();
         }},
        {"failure",
         [this] { system.transport.fail(u"/v1/health"_s, URLError::Code::networkConnectionLost); }},
        {"late failure",
         [this] {
             answerHealth();
             system.transport.answer(u"/v1/archives"_s, 500, "");
         }},
    };
    for (const auto &outcome : outcomes) {
        SCOPED_TRACE(outcome.name);
        AppStore fresh(system.platform());
        auto stale = fresh.connect();
        fresh.replaceGeneration();
        outcome.happen();
        await(std::move(stale));
        EXPECT_FALSE(fresh.isConnected());
        EXPECT_TRUE(fresh.archives().isEmpty());
        EXPECT_EQ(fresh.notice(), std::nullopt);
        EXPECT_TRUE(fresh.isConnecting()) << "left to the run that replaced it";
    }
}

TEST_F(Connect, theRunThatReplacedAStaleOneHasTheLastWord) {
    auto stale = store.connect();
    store.replaceGeneration();
    auto current = store.connect();
    // The longest waiting requests are those of the stale run.
    answerHealth(1);
    answerArchives({});
    await(std::move(stale));
    EXPECT_FALSE(store.isConnected());
    EXPECT_TRUE(store.isConnecting());
    answerHealth(2);
    answerArchives();
    await(std::move(current));
    EXPECT_EQ(store.health(), SampleCatalogue::health(2));
    EXPECT_EQ(store.archives(), SampleCatalogue::archives());
    EXPECT_FALSE(store.isConnecting());
}
