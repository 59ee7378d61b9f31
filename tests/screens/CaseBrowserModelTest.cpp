#include "screens/CaseBrowserModel.h"

#include "service/Endpoints.h"
#include "tests/screens/ModelColumn.h"
#include "tests/screens/SampleCase.h"
#include "tests/store/StoreTest.h"

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Showing = CaseBrowserModel::Showing;

namespace {

const auto searchPath = u'/' + QString(Endpoint::search);
const auto facetsPath = u'/' + QString(Endpoint::facets);
const auto categoriesPath = u'/' + QString(Endpoint::categories);

const QByteArray facets = R"({"categories":["medicine","deep sea"],"years":[1994,2001],)"
                          R"("decades":["before1940","1990"]})";

class CaseBrowserModelTest : public StoreTest {
protected:
    ~CaseBrowserModelTest() override {
        m_model.reset();
        settleEventLoop();
    }

    void appear(const QString &destination) {
        store.setDestination(destination);
        m_model = std::make_unique<CaseBrowserModel>();
        m_model->setStore(&store);
        m_model->componentComplete();
        settleEventLoop();
    }

    /// On an archive whose first page and filters have come.
    void open() {
        appear(u"foible"_s);
        answer(SampleCase::searchPage({u"a"_s, u"b"_s}, 9, true));
        transport().answer(facetsPath, 200, facets);
        settleEventLoop();
    }

    void answer(const QByteArray &page) {
        transport().answer(searchPath, 200, page);
        settleEventLoop();
    }

    void pause(std::chrono::milliseconds time) {
        settleEventLoop();
        system.clock.advance(time);
        settleEventLoop();
    }

    QStringList shown() const { return column(*m_model->cards(), CaseCardModel::caseId); }
    static QStringList labels(CaseFilter *filter) {
        return column(*filter->choices(), FilterChoices::label);
    }

    FakeTransport &transport() { return system.transport; }
    qsizetype searching() const { return system.transport.waiting(searchPath); }
    QString lastQuery() const {
        return system.transport.requests().back().url.query(QUrl::FullyDecoded);
    }

    std::unique_ptr<CaseBrowserModel> m_model;
};

} // namespace

TEST_F(CaseBrowserModelTest, ShowsTheFirstPageAndTheFiltersOfItsArchive) {
    appear(u"makers"_s);
    EXPECT_EQ(m_model->showing(), Showing::Loading);
    EXPECT_EQ(
        transport().requests()[0].url.query(),
        u"q=&archive=makers&category=&archives=&decade=&year=&sort=recent&offset=0&locale=en"_s);
    EXPECT_EQ(transport().requests()[1].url.query(), u"archive=makers&locale=en"_s);
    answer(SampleCase::searchPage({u"a"_s, u"b"_s}, 1234, true));
    EXPECT_EQ(m_model->showing(), Showing::Cards);
    EXPECT_EQ(shown(), QStringList({u"a"_s, u"b"_s}));
    EXPECT_EQ(m_model->total(), 1234);
    EXPECT_TRUE(m_model->hasMore());

    EXPECT_FALSE(m_model->year()->hasChoice());
    transport().answer(facetsPath, 200, facets);
    settleEventLoop();
    EXPECT_EQ(labels(m_model->category()),
              QStringList({u"All categories"_s, u"Medicine"_s, u"Deep Sea"_s}));
    EXPECT_EQ(labels(m_model->decade()),
              QStringList({u"All years"_s, u"Before 1940"_s, u"1990\u20131999"_s}));
    EXPECT_EQ(labels(m_model->year()), QStringList({u"Exact year"_s, u"1994"_s, u"2001"_s}));
    EXPECT_EQ(searching(), 0) << "choices that arrive are no choice made";
}

TEST_F(CaseBrowserModelTest, FiltersFallBackAndMayBeMissing) {
    for (const bool old : {true, false}) {
        appear(u"foible"_s);
        answer(SampleCase::searchPage({}, 0, false));
        EXPECT_EQ(m_model->showing(), Showing::Nothing);
        transport().answer(facetsPath, 404, "{}");
        settleEventLoop();
        EXPECT_EQ(lastQuery(), u"archive=foible"_s);
        transport().answer(categoriesPath, old ? 200 : 404, R"({"items":["finance"]})");
        settleEventLoop();
        EXPECT_EQ(m_model->category()->hasChoice(), old);
        EXPECT_FALSE(m_model->decade()->hasChoice());
        EXPECT_EQ(store.notice(), std::nullopt);
    }
}

TEST_F(CaseBrowserModelTest, EachFilterSearchesAtOnce) {
    appear(u"all"_s);
    answer(SampleCase::searchPage({}, 0, false));
    transport().answer(facetsPath, 200, facets);
    settleEventLoop();

    struct Step {
        std::function<void(CaseBrowserModel &)> choose;
        QString sent;
    };
    const Step steps[] = {
        {[](auto &model) { model.category()->setIndex(1); }, u"category=medicine&archives="_s},
        {[](auto &model) { model.decade()->setIndex(2); }, u"decade=1990&year=&"_s},
        {[](auto &model) { model.year()->setIndex(2); }, u"decade=&year=2001&"_s},
        {[](auto &model) { model.decade()->setIndex(1); }, u"decade=before1940&year=&"_s},
        {[](auto &model) { model.decade()->setIndex(0); },
         u"category=medicine&archives=&decade=&year=&"_s},
        {[](auto &model) { model.sort()->setIndex(2); }, u"sort=significance&offset=0"_s},
        {[](auto &model) { model.limitToArchive(u"makers"_s, true); }, u"archives=makers&"_s},
        {[](auto &model) { model.limitToArchive(u"lumen"_s, true); }, u"archives=lumen,makers&"_s},
        {[](auto &model) { model.limitToArchive(u"makers"_s, false); }, u"archives=lumen&"_s},
        {[](auto &model) { model.searchAllArchives(); },
         u"archive=&category=medicine&archives=&"_s},
    };
    for (const auto &step : steps) {
        const auto before = transport().requests().size();
        step.choose(*m_model);
        settleEventLoop();
        EXPECT_EQ(transport().requests().size(), before + 1);
        EXPECT_TRUE(lastQuery().contains(step.sent)) << lastQuery().toStdString();
        EXPECT_EQ(m_model->showing(), Showing::Loading);
        answer(SampleCase::searchPage({}, 0, false));
    }
    m_model->searchAllArchives();
    settleEventLoop();
    EXPECT_EQ(searching(), 0) << "no change, no search";
}

TEST_F(CaseBrowserModelTest, TypingWaitsForAPauseAndClearingDoesNot) {
    open();
    for (const auto &text : {u"b"_s, u"br"_s, u"bri"_s}) {
        m_model->setText(text);
        pause(200ms);
        EXPECT_EQ(searching(), 0);
    }
    EXPECT_EQ(m_model->showing(), Showing::Cards) << "the cards stay while the user types";
    pause(50ms);
    ASSERT_EQ(searching(), 1);
    EXPECT_TRUE(lastQuery().startsWith(u"q=bri&"_s));
    answer(SampleCase::searchPage({u"c"_s}, 1, false));

    m_model->setText(u"brid"_s);
    m_model->setText(QString());
    settleEventLoop();
    ASSERT_EQ(searching(), 1);
    EXPECT_TRUE(lastQuery().startsWith(u"q=&"_s));
    answer(SampleCase::searchPage({u"a"_s}, 1, false));
    EXPECT_EQ(system.clock.sleepers(), 0);
}

TEST_F(CaseBrowserModelTest, ALateReplyChangesNothing) {
    open();
    m_model->sort()->setIndex(1);
    settleEventLoop();
    // The older reply is there, but not yet taken, when the newer search begins.
    transport().answer(searchPath, 200, SampleCase::searchPage({u"old"_s}, 1, false));
    m_model->sort()->setIndex(2);
    settleEventLoop();
    EXPECT_EQ(m_model->showing(), Showing::Loading);
    ASSERT_EQ(searching(), 1);
    answer(SampleCase::searchPage({u"new"_s}, 1, false));
    EXPECT_EQ(shown(), QStringList({u"new"_s}));

    // The same with a failure, and with a search that was cancelled on its way.
    m_model->sort()->setIndex(0);
    settleEventLoop();
    transport().fail(searchPath, URLError::Code::timedOut);
    m_model->sort()->setIndex(1);
    settleEventLoop();
    m_model->sort()->setIndex(2);
    settleEventLoop();
    EXPECT_EQ(m_model->showing(), Showing::Loading);
    EXPECT_EQ(searching(), 1);
    answer(SampleCase::searchPage({u"newest"_s}, 1, false));
    EXPECT_EQ(shown(), QStringList({u"newest"_s}));
}

TEST_F(CaseBrowserModelTest, AFailureEmptiesTheListAndOffersARetry) {
    open();
    m_model->setSelected(u"foible:b"_s);
    EXPECT_EQ(m_model->selectedCard(), SampleCase::card(u"b"_s));
    m_model->sort()->setIndex(1);
    settleEventLoop();
    transport().answer(searchPath, 500, "<html>");
    settleEventLoop();
    EXPECT_EQ(m_model->showing(), Showing::Failed);
    EXPECT_TRUE(shown().isEmpty());
    EXPECT_EQ(m_model->total(), 0);
    EXPECT_FALSE(m_model->hasMore());
    EXPECT_EQ(m_model->selectedCard(), CaseCard());
    EXPECT_EQ(store.notice(), std::nullopt);

    m_model->beginSearch();
    settleEventLoop();
    EXPECT_EQ(m_model->showing(), Showing::Loading);
    answer(SampleCase::searchPage({u"b"_s}, 1, false));
    EXPECT_EQ(m_model->showing(), Showing::Cards);
    EXPECT_EQ(m_model->selectedCard(), SampleCase::card(u"b"_s))
        << "the choice outlived the failure";
}

TEST_F(CaseBrowserModelTest, FurtherPagesAddWhatIsNew) {
    open();
    m_model->setSelected(u"foible:d"_s);
    m_model->beginMore();
    m_model->beginMore();
    settleEventLoop();
    EXPECT_TRUE(m_model->isLoadingMore());
    ASSERT_EQ(searching(), 1) << "one page at a time";
    EXPECT_TRUE(lastQuery().contains(u"&offset=2&"_s));
    answer(SampleCase::searchPage({u"b"_s, u"c"_s, u"d"_s}, 77, true));
    EXPECT_EQ(shown(), QStringList({u"a"_s, u"b"_s, u"c"_s, u"d"_s}));
    EXPECT_EQ(m_model->total(), 9) << "the first page's word stands";
    EXPECT_TRUE(m_model->hasMore());
    EXPECT_FALSE(m_model->isLoadingMore());
    EXPECT_EQ(m_model->selectedCard(), SampleCase::card(u"d"_s));

    m_model->beginMore();
    settleEventLoop();
    transport().fail(searchPath, URLError::Code::timedOut);
    settleEventLoop();
    EXPECT_EQ(store.notice(), store.text(u"loadFailed"_s));
    EXPECT_EQ(m_model->showing(), Showing::Cards);
    EXPECT_EQ(shown().size(), 4);

    m_model->beginMore();
    settleEventLoop();
    EXPECT_TRUE(lastQuery().contains(u"&offset=4&"_s));
    answer(SampleCase::searchPage({u"a"_s, u"d"_s}, 9, false));
    EXPECT_EQ(shown().size(), 4);
    EXPECT_FALSE(m_model->hasMore());
}

TEST_F(CaseBrowserModelTest, AFurtherPageBelongsToTheCardsOnDisplay) {
    open();
    // Typed, but not yet searched for.
    m_model->setText(u"bridge"_s);
    m_model->beginMore();
    settleEventLoop();
    EXPECT_TRUE(lastQuery().startsWith(u"q=&"_s)) << lastQuery().toStdString();

    pause(250ms);
    ASSERT_EQ(searching(), 2);
    answer(SampleCase::searchPage({u"page"_s}, 9, false));
    EXPECT_FALSE(m_model->isLoadingMore());
    EXPECT_EQ(shown(), QStringList({u"a"_s, u"b"_s})) << "dropped: another search has begun";
    m_model->beginMore();
    settleEventLoop();
    EXPECT_EQ(searching(), 1) << "no further page while the first is loading";
    answer(SampleCase::searchPage({u"found"_s}, 1, false));
    EXPECT_EQ(shown(), QStringList({u"found"_s}));
}

TEST_F(CaseBrowserModelTest, LeavingEndsEverythingSilently) {
    appear(u"foible"_s);
    m_model.reset();
    settleEventLoop();
    EXPECT_EQ(searching() + transport().waiting(facetsPath), 0);

    open();
    m_model->beginMore();
    m_model->setText(u"bridge"_s);
    settleEventLoop();
    // A page that came in, but was not taken, before the screen went.
    transport().answer(searchPath, 500, "{}");
    m_model.reset();
    settleEventLoop();
    EXPECT_EQ(system.clock.sleepers(), 0);

    // Gone before the first step was taken.
    m_model = std::make_unique<CaseBrowserModel>();
    m_model->setStore(&store);
    m_model->componentComplete();
    m_model.reset();
    settleEventLoop();
    EXPECT_EQ(searching(), 0);
    EXPECT_EQ(store.notice(), std::nullopt);
}
