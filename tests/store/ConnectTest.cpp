#include "tests/store/SampleCatalogue.h"
#include "tests/store/StoreTest.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

const auto healthPath = u"/v1/health"_s;
const auto archivesPath = u"/v1/archives"_s;

class Connect : public StoreTest {
protected:
    void answerHealth(qint64 total = 2400) {
        system.transport.answer(healthPath, 200, SampleCatalogue::healthBody(total));
    }
    void answerArchives(const QList<Archive> &archives = SampleCatalogue::archives()) {
        system.transport.answer(archivesPath, 200, SampleCatalogue::archivesBody(archives));
    }
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
    system.transport.answer(healthPath, 200, Json::encode(health));
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

TEST_F(Connect, aFailureOfEitherRequestKeepsTheCatalogueAndTellsWhy) {
    auto first = store.connect();
    answerHealth();
    answerArchives();
    await(std::move(first));

    struct Row {
        int status; // 0 without an answer
        QByteArray body;
        QString notice;
    };
    const std::vector<Row> rows = {
        {0, "", text("urlError.timedOut")},
        {502, "<!doctype html>", u"http 502"_s},
        {302, "{}", u"http 302"_s},
        {429, R"({"error":"too_many"})", u"too many"_s},
        {503, R"({"error":"at_rest","message":"Back at noon."})", u"Back at noon."_s},
        {200, "<!doctype html>", text("decodingError")},
        {200, R"({"items":[{"id":"lumen"}]})", text("decodingError")},
    };
    for (const auto &row : rows) {
        for (const auto &failing : {healthPath, archivesPath}) {
            SCOPED_TRACE(failing.toStdString() + std::to_string(row.status));
            store.dismissNotice();
            auto connecting = store.connect();
            if (row.status == 0)
                system.transport.fail(failing, URLError::Code::timedOut);
            else
                system.transport.answer(failing, row.status, row.body);
            await(std::move(connecting));
            EXPECT_EQ(system.transport.waiting(healthPath), 0) << "the other one is cancelled";
            EXPECT_EQ(system.transport.waiting(archivesPath), 0);
            EXPECT_EQ(store.health(), SampleCatalogue::health());
            EXPECT_EQ(store.archives(), SampleCatalogue::archives());
            EXPECT_EQ(store.notice(), row.notice);
            EXPECT_FALSE(store.isConnecting());
        }
    }

    auto connecting = store.connect();
    system.transport.fail(archivesPath, URLError::Code::timedOut);
    system.transport.fail(healthPath, URLError::Code::cannotFindHost);
    await(std::move(connecting));
    EXPECT_EQ(store.notice(), text("urlError.timedOut")) << "that of the first of two failures";
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
         [this] { system.transport.fail(healthPath, URLError::Code::networkConnectionLost); }},
        {"late failure",
         [this] {
             answerHealth();
             system.transport.answer(archivesPath, 500, "");
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
