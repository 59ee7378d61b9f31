#include "screens/HomeModel.h"
#include "service/Endpoints.h"
#include "tests/screens/ModelColumn.h"
#include "tests/screens/SampleCase.h"
#include "tests/store/StoreTest.h"

using namespace Qt::StringLiterals;

namespace {

class HomeModelTest : public StoreTest {
protected:
    void appear() {
        m_model = std::make_unique<HomeModel>();
        m_model->setProperty("store", QVariant::fromValue(&store));
        m_model->componentComplete();
        awaitRequest();
    }

    void awaitRequest() {
        ASSERT_TRUE(eventually([&] { return system.transport.waiting(path()) > 0; }));
    }

    void answer(const QStringList &ids) {
        system.transport.answer(path(), 200, SampleCase::searchPage(ids, 9, true));
        settleEventLoop();
    }

    QStringList shown() const { return column(*m_model->latest(), CaseCardModel::caseId); }

    static QString path() { return u'/' + QString(Endpoint::search); }

    std::unique_ptr<HomeModel> m_model;
};

} // namespace

TEST_F(HomeModelTest, AsksForTheTwoNewestOfTheFlagshipBeforeAnythingIsConnected) {
    appear();
    EXPECT_EQ(system.transport.requests().back().url.query(),
              u"archive=foible&limit=2&locale=en"_s);
    EXPECT_TRUE(m_model->isEmpty());
    answer({u"a"_s, u"b"_s, u"c"_s});
    EXPECT_EQ(shown(), QStringList({u"a"_s, u"b"_s}));
    EXPECT_FALSE(m_model->hasFailed());
}

TEST_F(HomeModelTest, AFailureShowsARetryOnlyWhileThereIsNothingElse) {
    appear();
    system.transport.fail(path(), URLError::Code::timedOut);
    settleEventLoop();
    EXPECT_TRUE(m_model->hasFailed());
    EXPECT_TRUE(m_model->isEmpty());
    EXPECT_EQ(store.notice(), std::nullopt);

    m_model->beginLoad();
    awaitRequest();
    EXPECT_FALSE(m_model->hasFailed()) << "the spinner stands while the retry runs";
    answer({u"a"_s});

    m_model->beginLoad();
    awaitRequest();
    system.transport.answer(path(), 500, "<html>");
    settleEventLoop();
    EXPECT_EQ(shown(), QStringList({u"a"_s}));
}

TEST_F(HomeModelTest, ALanguageChangeAsksAgainAndDropsTheOlderReply) {
    appear();
    store.setLanguage(AppLanguage::de);
    settleEventLoop();
    awaitRequest();
    EXPECT_EQ(system.transport.requests().back().url.query(),
              u"archive=foible&limit=2&locale=de"_s);
    EXPECT_EQ(system.transport.waiting(path()), 1) << "the older request was cancelled";
    answer({u"neu"_s});
    EXPECT_EQ(shown(), QStringList({u"neu"_s}));
}

TEST_F(HomeModelTest, LeavingTheScreenEndsItsRequest) {
    appear();
    m_model.reset();
    settleEventLoop();
    EXPECT_EQ(system.transport.waiting(path()), 0);

    // Gone before the first step was taken.
    m_model = std::make_unique<HomeModel>();
    m_model->setProperty("store", QVariant::fromValue(&store));
    m_model->componentComplete();
    m_model.reset();
    settleEventLoop();
    EXPECT_EQ(system.transport.waiting(path()), 0);
}
