#include "screens/CaseBrowserModel.h"
#include "tests/screens/SampleCase.h"
#include "tests/store/StoreTest.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Showing = CaseBrowserModel::Showing;

namespace {

class SavedBrowserTest : public StoreTest {
protected:
    void save(const QStringList &ids) {
        QList<CaseCard> saved;
        for (const auto &id : ids)
            saved.append(SampleCase::card(id));
        StoreAccess::library(store).saved = saved;
        Q_EMIT store.libraryChanged();
        settleEventLoop();
    }

    void appear() {
        store.setDestination(u"saved"_s);
        m_model.setStore(&store);
        m_model.componentComplete();
        settleEventLoop();
    }

    CaseBrowserModel m_model;
};

} // namespace

TEST_F(SavedBrowserTest, SearchesTheSavedCasesOnThisMachineAlone) {
    save({u"Alpha"_s, u"Beta"_s});
    appear();
    EXPECT_EQ(m_model.title(), store.text(u"wallCases"_s));
    EXPECT_EQ(m_model.total(), 2);
    EXPECT_FALSE(m_model.hasMore());

    m_model.setText(u"beta"_s);
    settleEventLoop();
    EXPECT_EQ(m_model.total(), 2) << "typing waits here as well";
    system.clock.advance(250ms);
    settleEventLoop();
    EXPECT_EQ(m_model.total(), 1);
    m_model.setText(u"gamma"_s);
    settleEventLoop();
    system.clock.advance(250ms);
    settleEventLoop();
    EXPECT_EQ(m_model.showing(), Showing::Nothing);
    EXPECT_TRUE(system.transport.requests().empty());
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
