#include "records/ArchiveStyle.h"
#include "screens/HistoryModel.h"
#include "screens/WallCells.h"
#include "service/Endpoints.h"
#include "tests/screens/ModelColumn.h"
#include "tests/store/StoreTest.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

Conversation conversation(const QString &title, const QList<QStringList> &talk = {}) {
    Conversation result;
    result.title = title;
    for (const auto &turn : talk)
        result.messages.append(ChatMessage::make(turn[0], turn[1]));
    return result;
}

WallItem item(const QString &id, const QString &kind, const QString &title,
              const std::optional<QString> &body = {}) {
    WallItem result;
    result.id = id;
    result.kind = kind;
    result.title = title;
    result.body = body;
    return result;
}

template <class Model>
class KeptLists : public StoreTest {
protected:
    void appear() {
        m_model.setProperty("store", QVariant::fromValue(&store));
        m_model.componentComplete();
        settleEventLoop();
    }

    Model m_model;
};

class HistoryModelTest : public KeptLists<HistoryModel> {
protected:
    QStringList titles() { return column(*m_model.conversations(), ConversationModel::title); }
    QVariant first(int role) { return m_model.conversations()->index(0, 0).data(role); }
};

class WallModelTest : public KeptLists<WallModel> {
protected:
    void SetUp() override {
        StoreAccess::setAccount(store, u"user"_s);
        StoreAccess::setWall(store, m_wall);
        m_model.setColumns(2);
        appear();
    }

    QStringList ids(int first) {
        WallCells cells;
        cells.setWall(&m_model);
        cells.setFirst(first);
        return column(cells, WallCells::itemId);
    }
    QStringList rows(int role) { return column(*m_model.rows(), role); }

    QList<WallItem> m_wall{
        item(u"1"_s, u"save"_s, u"Bridge"_s),
        item(
            u"2"_s, u"chat"_s, u"Talk"_s,
            u"{\"lit\":[\"lumen\"],\"question\":\"Why\",\"cases\":[],\"turns\":[{\"role\":\"assistant\",\"content\":\"STRASSE am Fluß\"}]}"_s),
        item(u"3"_s, u"later"_s, u"Dam"_s), item(u"4"_s, u"chat"_s, u"Broken"_s, u"{"_s),
        item(u"pending:x"_s, u"save"_s, u"Tower"_s)};
};

} // namespace

TEST_F(HistoryModelTest, FiltersTitlesAndEveryMessageWithoutCase) {
    StoreAccess::library(store).conversations = {
        conversation(u"Bridges"_s, {{u"user"_s, u"Why?"_s},
                                    {u"assistant"_s, u"old"_s},
                                    {u"assistant"_s, u"Rivets  ÄRGER"_s},
                                    {u"user"_s, u"More"_s}}),
        conversation(u"Dams"_s, {{u"user"_s, u"Cafe\u0301"_s}})};
    appear();
    QAbstractItemModelTester tester(m_model.conversations());
    EXPECT_EQ(first(ConversationModel::answer), u"Rivets  ÄRGER"_s);

    QSignalSpy resets(m_model.conversations(), &QAbstractItemModel::modelReset);
    const QList<std::pair<QString, QStringList>> cases = {
        {u"s"_s, {u"Bridges"_s, u"Dams"_s}},
        {u"rivets  ä"_s, {u"Bridges"_s}},
        {u"rivets  äx"_s, {}},
        {u"ärger more"_s, {u"Bridges"_s}},
        {u"CAFÉ"_s, {u"Dams"_s}},
        {u" "_s, {u"Bridges"_s, u"Dams"_s}},
        {u"  "_s, {u"Bridges"_s}},
        {QString(), {u"Bridges"_s, u"Dams"_s}},
    };
    for (const auto &[query, found] : cases) {
        m_model.setQuery(query);
        EXPECT_EQ(titles(), found) << query.toStdString();
        EXPECT_EQ(m_model.isEmpty(), found.isEmpty());
    }
    EXPECT_EQ(resets.count(), 0) << "every row on display would be made anew";
}

TEST(TextSearch, FindsWordsWhereverTheyStand) {
    const QByteArray words("noon");
    for (qsizetype length = 0; length < 200; ++length) {
        const QByteArray text(length, 'n');
        EXPECT_FALSE(containsWords(text, words)) << length;
        for (qsizetype place = 0; place <= length; ++place)
            EXPECT_TRUE(containsWords(QByteArray(text).insert(place, words), words))
                << place << " of " << length;
        EXPECT_EQ(containsWords(text, "n"), length > 0);
    }
}

TEST_F(HistoryModelTest, FollowsTheLibraryRowByRowAlsoUnderAFilter) {
    StoreAccess::library(store).conversations = {
        conversation(u"One"_s), conversation(u"Two more"_s), conversation(u"Three more"_s)};
    appear();
    m_model.setQuery(u"more"_s);
    QAbstractItemModelTester tester(m_model.conversations());
    QSignalSpy resets(m_model.conversations(), &QAbstractItemModel::modelReset);
    QSignalSpy changes(m_model.conversations(), &QAbstractItemModel::dataChanged);

    m_model.rename(first(ConversationModel::conversationId).toString(), u"  Second, more "_s);
    EXPECT_EQ(titles(), QStringList({u"Second, more"_s, u"Three more"_s}));
    m_model.rename(first(ConversationModel::conversationId).toString(), u"  "_s);
    EXPECT_EQ(changes.count(), 1);
    m_model.rename(first(ConversationModel::conversationId).toString(), u"Gone"_s);
    EXPECT_EQ(titles(), QStringList({u"Three more"_s}));

    m_model.open(first(ConversationModel::conversationId).toString());
    EXPECT_EQ(store.chatTitle(), u"Three more"_s);
    store.setDestination(u"history"_s);
    m_model.remove(store.chat().id.text);
    EXPECT_TRUE(m_model.isEmpty());
    EXPECT_EQ(store.messageCount(), 0);
    EXPECT_EQ(store.destination(), u"history"_s);
    EXPECT_EQ(resets.count(), 0);
}

TEST_F(WallModelTest, ListsChatsFirstAndCasesSideBySide) {
    EXPECT_EQ(rows(WallRowModel::title), QStringList({u"Talk"_s, u"Broken"_s, {}, {}}));
    EXPECT_EQ(rows(WallRowModel::resumable),
              QStringList({u"true"_s, u"false"_s, u"false"_s, u"false"_s}));
    EXPECT_EQ(rows(WallRowModel::domains).first(), ArchiveStyle::domain(u"lumen"_s));
    EXPECT_EQ(rows(WallRowModel::leads),
              QStringList({u"true"_s, u"false"_s, u"true"_s, u"false"_s}));
    EXPECT_EQ(ids(0), QStringList({u"1"_s, u"3"_s}));
    EXPECT_EQ(ids(2), QStringList({u"pending:x"_s}));
    EXPECT_FALSE(m_model.isRemovable(m_wall.last()));

    m_model.setQuery(u"strasse am fluß"_s);
    EXPECT_EQ(rows(WallRowModel::title), QStringList({u"Talk"_s}));
    m_model.setQuery(u"o"_s);
    EXPECT_EQ(rows(WallRowModel::title), QStringList({u"Talk"_s, u"Broken"_s, {}}));
    EXPECT_EQ(ids(0), QStringList({u"pending:x"_s}));

    StoreAccess::setAccount(store, std::nullopt);
    EXPECT_TRUE(m_model.isEmpty());
}

TEST_F(WallModelTest, ARemovalDisablesItsOwnControlAlone) {
    WallCells cells;
    cells.setWall(&m_model);
    QSignalSpy changes(&cells, &QAbstractItemModel::dataChanged);
    const auto path = QLatin1Char('/') + QString(Endpoint::wall);
    m_model.beginRemove(u"3"_s);
    settleEventLoop();
    EXPECT_EQ(column(cells, WallCells::removable), QStringList({u"true"_s, u"false"_s}));
    ASSERT_EQ(changes.count(), 1);
    EXPECT_EQ(changes[0][0].toModelIndex().row(), 1);

    // The first to wait is the fetch of the screen's appearance.
    system.transport.answer(path, 500, "{}");
    system.transport.answer(path, 200, "{}");
    ASSERT_TRUE(eventually([&] { return ids(0) == QStringList({u"1"_s, u"pending:x"_s}); }));
    EXPECT_TRUE(m_model.isRemovable(m_wall[2]));
}

TEST_F(WallModelTest, ResumesWhatCanBeReadAndRefreshesOnAppearing) {
    EXPECT_TRUE(store.isWallLoading());
    m_model.resume(u"4"_s);
    EXPECT_EQ(store.destination(), u"home"_s);
    m_model.resume(u"2"_s);
    EXPECT_EQ(store.chatTitle(), u"Why"_s);
    EXPECT_EQ(store.chat().wallID, u"2"_s);
}
