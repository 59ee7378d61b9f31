#include "screens/HomeModel.h"
#include "service/Endpoints.h"
#include "tests/screens/SearchPages.h"
#include "tests/support/Await.h"
#include "tests/support/FakeTransport.h"
#include "tests/support/TestPlatform.h"

#include <gtest/gtest.h>

namespace {

class HomeModelTest : public testing::Test {
protected:
    void appear() {
        m_model = std::make_unique<HomeModel>();
        m_model->setProperty("store", QVariant::fromValue(&m_store));
        m_model->componentComplete();
        awaitRequest();
    }

    void awaitRequest() {
        ASSERT_TRUE(eventually([&] { return m_system.transport.waiting(path()) > 0; }));
    }

    void answer(const QStringList &ids) {
        m_system.transport.answer(path(), 200, searchPage(ids, 9, true));
        settleEventLoop();
    }

    QStringList shown() const {
        QStringList ids;
        const auto *model = m_model->latest();
        for (int row = 0; row < model->rowCount(); ++row)
            ids.append(model->index(row, 0).data(CaseCardModel::caseId).toString());
        return ids;
    }

    static QString path() { return QLatin1Char('/') + QString(Endpoint::search); }

    TestPlatform<FakeTransport> m_system;
    AppStore m_store{m_system.platform()};
    std::unique_ptr<HomeModel> m_model;
};

} // namespace

TEST_F(HomeModelTest, AsksForTheTwoNewestOfTheFlagshipBeforeAnythingIsConnected) {
    appear();
    EXPECT_EQ(m_system.transport.requests().back().url.query(),
              QStringLiteral("archive=foible&limit=2&locale=en"));
    EXPECT_TRUE(m_model->isEmpty());
    answer({QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")});
    EXPECT_EQ(shown(), QStringList({QStringLiteral("a"), QStringLiteral("b")}));
    EXPECT_FALSE(m_model->hasFailed());
}

TEST_F(HomeModelTest, AFailureShowsARetryOnlyWhileThereIsNothingElse) {
    appear();
    m_system.transport.fail(path(), URLError::Code::timedOut);
    settleEventLoop();
    EXPECT_TRUE(m_model->hasFailed());
    EXPECT_TRUE(m_model->isEmpty());
    EXPECT_EQ(m_store.notice(), std::nullopt);

    m_model->beginLoad();
    awaitRequest();
    EXPECT_FALSE(m_model->hasFailed()) << "the spinner stands while the retry runs";
    answer({QStringLiteral("a")});

    m_model->beginLoad();
    awaitRequest();
    m_system.transport.answer(path(), 500, "<html>");
    settleEventLoop();
    EXPECT_EQ(shown(), QStringList({QStringLiteral("a")}));
}

TEST_F(HomeModelTest, ALanguageChangeAsksAgainAndDropsTheOlderReply) {
    appear();
    m_store.setLanguage(AppLanguage::de);
    settleEventLoop();
    awaitRequest();
    EXPECT_EQ(m_system.transport.requests().back().url.query(),
              QStringLiteral("archive=foible&limit=2&locale=de"));
    EXPECT_EQ(m_system.transport.waiting(path()), 1) << "the older request was cancelled";
    answer({QStringLiteral("neu")});
    EXPECT_EQ(shown(), QStringList({QStringLiteral("neu")}));
}

TEST_F(HomeModelTest, LeavingTheScreenEndsItsRequest) {
    appear();
    m_model.reset();
    settleEventLoop();
    EXPECT_EQ(m_system.transport.waiting(path()), 0);

    // Gone before the first step was taken.
    m_model = std::make_unique<HomeModel>();
    m_model->setProperty("store", QVariant::fromValue(&m_store));
    m_model->componentComplete();
    m_model.reset();
    settleEventLoop();
    EXPECT_EQ(m_system.transport.waiting(path()), 0);
}
