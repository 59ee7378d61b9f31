#include "copy/Copy.h"
#include "platform/QtTransport.h"
#include "store/AppStore.h"
#include "tests/store/SampleCatalogue.h"
#include "tests/support/Await.h"
#include "tests/support/FakeTransport.h"
#include "tests/support/ScriptedService.h"
#include "tests/support/TestPlatform.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const auto healthPath = u"/v1/health"_s;
const auto archivesPath = u"/v1/archives"_s;

QString english(const QString &key) {
    return Copy::table(AppLanguage::en).value(key);
}

ScriptedAnswer goodHealth() {
    return ScriptedAnswer::reply(200, SampleCatalogue::healthBody());
}
ScriptedAnswer goodArchives() {
    return ScriptedAnswer::reply(200, SampleCatalogue::archivesBody());
}

/// A store against a service on this machine, already connected to it once.
class ConnectFailure : public testing::Test {
protected:
    ConnectFailure() {
        system.preferences.setValue(u"server"_s, service.base());
        store = std::make_unique<AppStore>(system.platform());
        service.expect("GET", healthPath, goodHealth());
        service.expect("GET", archivesPath, goodArchives());
        await(store->connect());
        EXPECT_TRUE(store->isConnected());
    }

    void expectOldCatalogueAndNotice(const QString &notice) {
        EXPECT_EQ(store->health(), SampleCatalogue::health());
        EXPECT_EQ(store->archives(), SampleCatalogue::archives());
        EXPECT_EQ(store->notice(), notice);
        EXPECT_FALSE(store->isConnecting());
    }

    ScriptedService service;
    TestPlatform<QtTransport> system;
    std::unique_ptr<AppStore> store;
};

} // namespace

TEST_F(ConnectFailure, ofEitherRequestKeepsTheCatalogueAndTellsWhy) {
    const ScriptedService other;
    struct Row {
        ScriptedAnswer answer;
        QString notice;
    };
    const auto lost = english(u"urlError.networkConnectionLost"_s);
    const std::vector<Row> rows = {
        {ScriptedAnswer::hangUp(), lost},
        {goodArchives().cutInHead(), lost},
        {goodArchives().cutInBody(), lost},
        {ScriptedAnswer::raw("hello\r\n"), lost},
        {ScriptedAnswer::html(502), u"http 502"_s},
        {ScriptedAnswer::html(200), english(u"decodingError"_s)},
        {ScriptedAnswer::reply(200), english(u"decodingError"_s)},
        {ScriptedAnswer::reply(200, R"({"items":[{"id":"lumen"}]})"), english(u"decodingError"_s)},
        {ScriptedAnswer::redirect(302, other.base().toLatin1() + "/v1/archives"), u"http 302"_s},
        {ScriptedAnswer::reply(503, R"({"error":"at_rest","message":"Back at noon."})"),
         u"Back at noon."_s},
        {ScriptedAnswer::reply(429, R"({"error":"too_many"})"), u"too many"_s},
    };
    for (const auto &row : rows) {
        for (const bool healthFails : {true, false}) {
            SCOPED_TRACE(row.answer.bytes().left(80).toStdString() +
                         (healthFails ? " for health" : " for archives"));
            store->dismissNotice();
            service.always("GET", healthPath, healthFails ? row.answer : goodHealth());
            service.always("GET", archivesPath, healthFails ? goodArchives() : row.answer);
            await(store->connect());
            expectOldCatalogueAndNotice(row.notice);
        }
    }

    service.always("GET", healthPath, goodHealth());
    service.always("GET", archivesPath, ScriptedAnswer::reply(200, R"({"items":[]})"));
    await(store->connect());
    EXPECT_TRUE(store->archives().isEmpty()) << "it recovers";
}

TEST_F(ConnectFailure, ofAServiceThatIsGone) {
    service.refuse();
    await(store->connect());
    expectOldCatalogueAndNotice(english(u"urlError.cannotConnectToHost"_s));
}

TEST_F(ConnectFailure, ofOneReallyCancelsTheOther) {
    for (const auto &[failing, sibling] :
         {std::pair{healthPath, archivesPath}, std::pair{archivesPath, healthPath}}) {
        SCOPED_TRACE(failing.toStdString());
        store->dismissNotice();
        service.expect("GET", failing,
                       ScriptedAnswer::reply(500, R"({"error":"out_of_ink"})").held());
        service.expect("GET", sibling, ScriptedAnswer::silence());
        const auto before = service.requests().size();

        auto connecting = store->connect();
        ASSERT_TRUE(eventually([&] { return service.requests().size() == before + 2; }))
            << "both are in flight at the same time";
        int waiting = 0;
        for (const auto &request : {service.requests()[before], service.requests()[before + 1]}) {
            if (request.path == sibling)
                waiting = request.connection;
        }
        ASSERT_TRUE(service.isOpen(waiting));

        service.release();
        await(std::move(connecting));
        expectOldCatalogueAndNotice(u"out of ink"_s);
        EXPECT_TRUE(eventually([&] { return !service.isOpen(waiting); }));
    }
}

TEST(ConnectFailureText, isTheEnglishSentenceOfEveryTransportError) {
    for (int code = 0; code <= static_cast<int>(URLError::Code::unknown); ++code) {
        TestPlatform<FakeTransport> system;
        AppStore store(system.platform());
        auto connecting = store.connect();
        const auto error = static_cast<URLError::Code>(code);
        system.transport.fail(archivesPath, error);
        await(std::move(connecting));
        const auto sentence = english(u"urlError."_s + URLError::name(error));
        EXPECT_FALSE(sentence.isEmpty());
        EXPECT_EQ(store.notice(), sentence);
        EXPECT_FALSE(store.isConnecting());
        EXPECT_FALSE(store.isConnected());
    }
}

TEST(ConnectFailureText, isThatOfTheFirstOfTwoFailures) {
    TestPlatform<FakeTransport> system;
    AppStore store(system.platform());
    auto connecting = store.connect();
    system.transport.fail(archivesPath, URLError::Code::timedOut);
    system.transport.fail(healthPath, URLError::Code::cannotFindHost);
    await(std::move(connecting));
    EXPECT_EQ(store.notice(), english(u"urlError.timedOut"_s));
}
