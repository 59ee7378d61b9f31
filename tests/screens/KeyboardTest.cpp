#include "tests/screens/ServiceWindow.h"

#include <QSet>
#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

void collectStops(QQuickItem *item, QSet<QQuickItem *> &stops) {
    if (!item->isVisible() || !item->isEnabled())
        return;
    if (item->activeFocusOnTab())
        stops.insert(item);
    for (auto *child : item->childItems())
        collectStops(child, stops);
}

/// The program on the real service, used without a mouse.
class KeyboardTest : public ServiceWindow {
protected:
    void SetUp() override {
        ServiceWindow::SetUp();
        activate();
        ASSERT_TRUE(eventually([&] { return m_window->ofType("ArchiveRow").size() == 5; }));
        ASSERT_TRUE(eventually([&] { return m_window->ofType("PaperCaseCard").size() == 2; }));
    }

    /// What a screen reader knows of the place that has the keyboard; a password field hides its
    /// inside.
    QAccessibleInterface *told() const {
        for (auto *item = m_window->focus(); item; item = item->parentItem()) {
            if (auto *interface = QAccessible::queryAccessibleInterface(item))
                return interface;
        }
        return nullptr;
    }

    QString name() const {
        auto *interface = told();
        if (!interface)
            return {};
        // The toolkit gives away no name of a password field.
        return interface->text(interface->state().passwordEdit ? QAccessible::Description
                                                               : QAccessible::Name);
    }

    /// What has the keyboard has a name and a role, is marked, and stands in sight.
    void expectGoodStop() const {
        auto *item = m_window->focus();
        const auto words = name().toStdString();
        auto *interface = told();
        ASSERT_NE(interface, nullptr);
        EXPECT_NE(words, "") << item->metaObject()->className()
                             << item->property("title").toString().toStdString();
        EXPECT_NE(interface->role(), QAccessible::Client) << words;
        if (const auto marked = item->property("visualFocus"); marked.isValid())
            EXPECT_TRUE(marked.toBool()) << words;
        const auto place = item->mapRectToScene(QRectF(0, 0, item->width(), item->height()));
        EXPECT_GE(place.bottom(), 20) << words;
        EXPECT_LE(place.top(), m_window->window()->height() - 20) << words;
    }

    /// Goes once around by the tab key, back to where it began. What can hold the keyboard was met.
    void walkAround() {
        QSet<QQuickItem *> stops;
        collectStops(m_window->window()->contentItem(), stops);
        auto *first = m_window->focus();
        QSet<QQuickItem *> met;
        int steps = 0;
        do {
            m_window->press(Qt::Key_Tab);
            settleEventLoop();
            // A list gives the keyboard on to one of its rows.
            for (auto *item = m_window->focus(); item; item = item->parentItem())
                met.insert(item);
            expectGoodStop();
        } while (m_window->focus() != first && ++steps < 100 && !HasFatalFailure());
        for (auto *stop : stops - met)
            ADD_FAILURE() << "never reached: " << stop->metaObject()->className();
    }
};

} // namespace

TEST_F(KeyboardTest, TheTabKeyMeetsEverythingOnEveryScreen) {
    m_window->ofType("NavigationRow").first()->forceActiveFocus(Qt::TabFocusReason);
    for (const auto *screen : {"home", "all", "chat", "wall", "history", "account"}) {
        SCOPED_TRACE(screen);
        m_store->setDestination(QLatin1String(screen));
        ASSERT_TRUE(eventually([&] { return m_window->ofType("Spinner").isEmpty(); }));
        walkAround();
    }
}

TEST_F(KeyboardTest, TheMenuOfTheWindowBeginsAConversation) {
    const auto buttons = m_window->buttons(u"Quillmere.Chat"_s);
    ASSERT_EQ(buttons.size(), 1);
    buttons.first()->forceActiveFocus(Qt::TabFocusReason);
    for (const auto pressed : {Qt::Key_Return, Qt::Key_Down, Qt::Key_Return})
        m_window->press(pressed);
    EXPECT_TRUE(eventually([&] { return m_store->destination() == u"chat"_s; }));
}

TEST_F(KeyboardTest, TheArrowKeysGoThroughTheSidebar) {
    m_window->ofType("NavigationRow").first()->forceActiveFocus(Qt::TabFocusReason);
    QStringList names{name()};
    for (int row = 0; row < 10; ++row) {
        m_window->press(Qt::Key_Down);
        names.append(name());
    }
    QStringList expected{english("tab.archives"), english("tab.ask"), english("tab.wall"),
                         english("wallConversations")};
    for (const auto &archive : m_store->archives())
        expected.append(archive.title);
    expected += {english("browseAllShort"), english("tab.account")};
    EXPECT_EQ(names, expected);
    m_window->press(Qt::Key_Down);
    EXPECT_EQ(name(), expected.last()) << "nothing below";
    m_window->press(Qt::Key_Up);
    EXPECT_EQ(name(), english("browseAllShort"));
    m_window->press(Qt::Key_Return);
    EXPECT_EQ(m_store->destination(), u"all"_s);

    QSignalSpy moves(m_window->window(), &QQuickWindow::activeFocusItemChanged);
    m_window->press(Qt::Key_Home);
    EXPECT_EQ(name(), u"Quillmere.Chat"_s);
    EXPECT_EQ(moves.count(), 1) << "not through the rows between, which a screen reader would tell";
    m_window->press(Qt::Key_End);
    EXPECT_EQ(name(), expected.last());
}

TEST_F(KeyboardTest, FromTheFirstScreenToTheLastSourceOfACase) {
    m_store->setDestination(u"foible"_s);
    ASSERT_TRUE(eventually([&] { return m_window->ofType("CaseRow").size() > 3; }));
    m_window->press(Qt::Key_F, Qt::ControlModifier);
    m_window->press(Qt::Key_Down);
    m_window->press(Qt::Key_Down);
    m_window->press(Qt::Key_Return);
    const auto title = name();
    ASSERT_TRUE(eventually([&] { return !m_window->ofType("ReaderRest").isEmpty(); }));

    const auto role = [](QQuickItem *item) {
        return QAccessible::queryAccessibleInterface(item)->role();
    };
    const auto texts = m_window->ofType("SelectableText");
    EXPECT_EQ(texts.first()->property("text").toString(), title);
    EXPECT_EQ(role(texts.first()), QAccessible::Heading);
    const auto links = m_window->ofType("PlainLink");
    ASSERT_FALSE(links.isEmpty());
    for (auto *link : links)
        EXPECT_EQ(role(link), QAccessible::Link);
    EXPECT_EQ(role(links.last()->parentItem()), QAccessible::List);

    while (m_window->focus() != links.last() && name() != english("askHead")) {
        m_window->press(Qt::Key_Tab);
        settleEventLoop();
    }
    ASSERT_EQ(m_window->focus(), links.last());
    expectGoodStop();
    m_window->press(Qt::Key_Return);
    EXPECT_EQ(m_system.browser.opened().size(), 1);
    walkAround();
}
