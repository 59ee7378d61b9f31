#include "records/Json.h"
#include "tests/screens/OpenWindow.h"
#include "tests/store/StoreTest.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// The history in the real window, used by the keyboard alone.
class KeptWindow : public StoreTest {
protected:
    void SetUp() override {
        for (const auto &title : {u"One"_s, u"Two"_s, u"Three"_s}) {
            Conversation conversation;
            conversation.title = title;
            StoreAccess::library(store).conversations.append(conversation);
        }
        store.persist();
        store.setDestination(u"history"_s);
        m_window = std::make_unique<OpenWindow>(store);
        m_window->window()->requestActivate();
        ASSERT_TRUE(eventually([&] { return m_window->window()->isActive(); }));
        ASSERT_TRUE(eventually([&] { return m_window->ofType("ConversationRow").size() == 3; }));
        m_window->ofType("SearchEntry").first()->forceActiveFocus(Qt::TabFocusReason);
    }

    void press(Qt::Key key) { m_window->press(key); }

    /// The accessible name of what has the keyboard.
    QString focus() const {
        auto *interface = QAccessible::queryAccessibleInterface(m_window->focus());
        return interface ? interface->text(QAccessible::Name) : QString();
    }

    bool comesTo(const QString &name) {
        return eventually([&] { return focus() == name; }, std::chrono::seconds(5));
    }

    void chooseInMenu(const QString &name) {
        press(Qt::Key_Tab);
        ASSERT_TRUE(comesTo(text("actions"))) << focus().toStdString();
        press(Qt::Key_Space);
        ASSERT_TRUE(eventually([&] { return !m_window->ofType("MenuRow").isEmpty(); }));
        press(Qt::Key_Down);
        while (focus() != name)
            press(Qt::Key_Down);
        press(Qt::Key_Return);
    }

    std::unique_ptr<OpenWindow> m_window;
};

} // namespace

TEST_F(KeptWindow, TheKeyboardRenamesAndDeletesAndComesBackToItsRow) {
    press(Qt::Key_Down);
    ASSERT_TRUE(comesTo(u"One"_s)) << focus().toStdString();
    press(Qt::Key_Down);
    ASSERT_TRUE(comesTo(u"Two"_s)) << focus().toStdString();

    chooseInMenu(text("rename"));
    ASSERT_TRUE(comesTo(text("rename"))) << focus().toStdString();
    for (const char letter : {'S', 'e', 'c', 'o', 'n', 'd'})
        QTest::keyClick(m_window->window(), letter);
    press(Qt::Key_Return);
    EXPECT_TRUE(eventually([&] { return store.library().conversations[1].title == u"Second"_s; }));
    EXPECT_TRUE(comesTo(text("actions"))) << focus().toStdString();

    press(Qt::Key_Backtab);
    ASSERT_TRUE(comesTo(u"Second"_s)) << focus().toStdString();
    chooseInMenu(text("delete"));
    ASSERT_TRUE(comesTo(text("cancel"))) << focus().toStdString();
    press(Qt::Key_Escape);
    EXPECT_TRUE(comesTo(text("actions"))) << focus().toStdString();
    EXPECT_EQ(store.library().conversations.size(), 3);

    press(Qt::Key_Backtab);
    chooseInMenu(text("delete"));
    ASSERT_TRUE(comesTo(text("cancel")));
    press(Qt::Key_Tab);
    ASSERT_TRUE(comesTo(text("delete"))) << focus().toStdString();
    press(Qt::Key_Return);
    EXPECT_TRUE(eventually([&] { return store.library().conversations.size() == 2; }));
    EXPECT_TRUE(eventually([&] { return m_window->ofType("ConversationRow").size() == 2; }));
    EXPECT_EQ(store.destination(), u"history"_s);
}

TEST_F(KeptWindow, TheWallStaysAtItsTopWhenItsHeaderGrows) {
    const auto wall = u"/v1/wall"_s;
    store.setLanguage(AppLanguage::ja);
    Account account;
    account.user.id = u"user"_s;
    StoreAccess::setAccount(store, account);
    QList<WallItem> items;
    for (int at = 0; at < 9; ++at) {
        WallItem item;
        item.id = QString::number(at);
        item.kind = at < 3 ? u"chat"_s : u"save"_s;
        item.title = u"One"_s;
        items.append(item);
    }
    system.transport.always(wall, HttpResponse{200, Json::encode(Items<WallItem>{items})});
    store.setDestination(u"wall"_s);
    ASSERT_TRUE(eventually([&] { return m_window->ofType("WallRow").size() > 3; }));
    auto *header = m_window->ofType("WallHeader").first();
    const auto isAtTop = [header] { return header->height() > 0 && header->y() == 0; };
    ASSERT_TRUE(eventually(isAtTop));

    const auto height = header->height();
    system.transport.always(wall, std::nullopt);
    store.beginRefreshWall();
    ASSERT_TRUE(eventually([&] { return system.transport.waiting(wall) > 0; }));
    system.transport.fail(wall, URLError::Code::notConnectedToInternet);
    ASSERT_TRUE(eventually([&] { return header->height() > height && isAtTop(); })) << header->y();

    const auto offline = header->height();
    store.beginRefreshWall();
    ASSERT_TRUE(eventually([&] { return system.transport.waiting(wall) > 0; }));
    system.transport.answer(wall, 500, "{}");
    EXPECT_TRUE(eventually([&] { return header->height() > offline && isAtTop(); })) << header->y();
}
