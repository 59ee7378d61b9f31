#include "tests/screens/ServiceWindow.h"

using namespace Qt::StringLiterals;

namespace {

using WindowTest = ServiceWindow;

/// The test opens it.
class LateWindow : public ServiceWindow {
protected:
    void SetUp() override {}
};

} // namespace

TEST_F(WindowTest, ShowsFiveArchivesAndTwoCasesOfTheRealService) {
    EXPECT_TRUE(eventually([&] { return m_window->ofType("ArchiveRow").size() == 5; }));
    EXPECT_TRUE(eventually([&] { return m_window->ofType("PaperCaseCard").size() == 2; }));
    EXPECT_TRUE(eventually([&] { return m_window->shows(english("connected")); }));
    EXPECT_TRUE(m_window->shows(u"70"_s));
    for (const auto &archive : m_store->archives()) {
        // A row of the sidebar for each; a row of the home screen for all but the flagship.
        EXPECT_EQ(m_window->buttons(archive.title).size(),
                  archive.id == QLatin1String("foible") ? 1 : 2)
            << archive.title.toStdString();
    }

    EXPECT_TRUE(m_window->press(m_store->archives().first().title));
    EXPECT_EQ(m_store->destination(), m_store->archives().first().id);
    EXPECT_TRUE(m_window->press(english("tab.archives")));
    EXPECT_TRUE(eventually([&] { return m_window->ofType("PaperCaseCard").size() == 2; }));
}

TEST_F(LateWindow, OpensWithoutAServiceAndFindsItLater) {
    ASSERT_TRUE(m_service.start());
    m_service.stop();
    open(m_service.base());

    const auto alert = english("urlError.cannotConnectToHost");
    EXPECT_TRUE(eventually([&] { return m_window->shows(alert); }));
    EXPECT_TRUE(m_window->shows(english("offline")));
    EXPECT_TRUE(m_window->ofType("ArchiveRow").isEmpty());
    EXPECT_TRUE(m_window->shows(english("browseAllShort")));
    EXPECT_TRUE(m_window->press(english("close")));
    EXPECT_TRUE(eventually([&] { return !m_window->shows(alert); }));
    EXPECT_EQ(m_store->notice(), std::nullopt);

    ASSERT_TRUE(m_service.start());
    EXPECT_TRUE(m_window->press(english("retry")));
    EXPECT_TRUE(eventually([&] { return m_window->ofType("PaperCaseCard").size() == 2; }));

    // A further window of the same program connects again, for all of them.
    EXPECT_TRUE(m_window->openAnother());
    EXPECT_TRUE(eventually([&] { return m_window->ofType("ArchiveRow").size() == 10; }));
}

TEST_F(WindowTest, ANewConversationLeavesAnyScreenAndALanguageLeavesItInPlace) {
    ASSERT_TRUE(eventually([&] { return m_store->isConnected(); }));

    // The command opens a new conversation from any screen.
    m_store->setDestination(u"wall"_s);
    m_store->newChat();
    EXPECT_EQ(m_store->destination(), u"chat"_s);

    m_store->setDestination(u"home"_s);
    ASSERT_TRUE(eventually([&] { return !m_window->ofType("LeadPanel").isEmpty(); }));
    const auto before = m_window->ofType("ArchivesHomeView");
    m_store->setLanguage(AppLanguage::de);
    EXPECT_EQ(m_window->ofType("ArchivesHomeView"), before)
        << "only the browser starts afresh with the language";
}

TEST_F(LateWindow, ComesToTheFrontWhenCalled) {
    open(u"http://127.0.0.1:1"_s);
    ASSERT_TRUE(eventually([&] { return m_store->notice() && !m_store->isConnecting(); }));
    auto *main = m_window->window();
    main->setWindowStates(Qt::WindowMinimized);
    QWindow other;
    other.show();
    other.requestActivate();
    ASSERT_TRUE(eventually([&] { return other.isActive(); }));

    WindowOpener::raise(u"permission"_s);
    EXPECT_TRUE(eventually([&] { return main->isActive(); }));
    EXPECT_EQ(main->windowStates(), Qt::WindowNoState);
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
}
