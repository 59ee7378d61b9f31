#include "screens/CaseBrowserModel.h"
#include "tests/screens/SearchPages.h"
#include "tests/store/StoreAccess.h"
#include "tests/support/Await.h"
#include "tests/support/FakeTransport.h"
#include "tests/support/TestPlatform.h"

#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Showing = CaseBrowserModel::Showing;

namespace {

class SavedBrowserTest : public testing::Test {
protected:
    void save(const QStringList &ids) {
        QList<CaseCard> saved;
        for (const auto &id : ids)
            saved.append(sampleCard(id));
        StoreAccess::library(m_store).saved = saved;
        Q_EMIT m_store.libraryChanged();
        settleEventLoop();
    }

    void appear() {
        m_store.setDestination(u"saved"_s);
        m_model.setStore(&m_store);
        m_model.componentComplete();
        settleEventLoop();
    }

    TestPlatform<FakeTransport> m_system;
    AppStore m_store{m_system.platform()};
    CaseBrowserModel m_model;
};

} // namespace

TEST_F(SavedBrowserTest, SearchesTheSavedCasesOnThisMachineAlone) {
    save({u"Alpha"_s, u"Beta"_s});
    appear();
    EXPECT_EQ(m_model.title(), m_store.text(u"wallCases"_s));
    EXPECT_EQ(m_model.total(), 2);
    EXPECT_FALSE(m_model.hasMore());

    m_model.setText(u"beta"_s);
    settleEventLoop();
    EXPECT_EQ(m_model.total(), 2) << "typing waits here as well";
    m_system.clock.advance(250ms);
    settleEventLoop();
    EXPECT_EQ(m_model.total(), 1);
    m_model.setText(u"gamma"_s);
    settleEventLoop();
    m_system.clock.advance(250ms);
    settleEventLoop();
    EXPECT_EQ(m_model.showing(), Showing::Nothing);
    EXPECT_TRUE(m_system.transport.requests().empty());
}

TEST_F(SavedBrowserTest, FollowsTheLibraryRowByRow) {
    save({u"a"_s, u"b"_s, u"c"_s});
    appear();
    m_model.setSelected(u"foible:b"_s);
    QSignalSpy reset(m_model.cards(), &QAbstractItemModel::modelReset);
    QSignalSpy removed(m_model.cards(), &QAbstractItemModel::rowsRemoved);
    save({u"a"_s, u"c"_s});
    EXPECT_EQ(m_model.total(), 2);
    EXPECT_EQ(removed.count(), 1);
    EXPECT_EQ(reset.count(), 0) << "the view keeps its place";
    EXPECT_EQ(m_model.selectedCard(), CaseCard());

    // A change of the library that is not one of its saved cases.
    QSignalSpy replaced(&m_model, &CaseBrowserModel::replaced);
    save({u"a"_s, u"c"_s});
    EXPECT_EQ(replaced.count() + reset.count(), 0);
    save({});
    EXPECT_EQ(m_model.showing(), Showing::Nothing);
}
