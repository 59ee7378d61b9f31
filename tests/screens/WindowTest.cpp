#include "copy/Copy.h"
#include "platform/QtTransport.h"
#include "tests/screens/OpenWindow.h"
#include "tests/support/Await.h"
#include "tests/support/LocalServiceProcess.h"
#include "tests/support/MessageCatcher.h"
#include "tests/support/TestPlatform.h"

#include <gtest/gtest.h>

namespace {

QString english(const char *key) {
    return Copy::text(QLatin1String(key), AppLanguage::en);
}

class WindowTest : public testing::Test {
protected:
    /// Opens the program on a service at the address.
    void open(const QString &base) {
        m_system.preferences.setValue(QStringLiteral("server"), base);
        m_store = std::make_unique<AppStore>(m_system.platform());
        m_window = std::make_unique<OpenWindow>(*m_store);
        ASSERT_NE(m_window->window(), nullptr);
    }

    AppStore &store() { return *m_store; }
    OpenWindow &window() { return *m_window; }

    TestPlatform<QtTransport> m_system;
    std::unique_ptr<AppStore> m_store;
    std::unique_ptr<OpenWindow> m_window;
};

} // namespace

TEST_F(WindowTest, ShowsFiveArchivesAndTwoCasesOfTheRealService) {
    LocalServiceProcess service;
    ASSERT_TRUE(service.start());
    open(service.base());

    EXPECT_TRUE(
        eventually([&] { return window().ofType(QStringLiteral("ArchiveRow")).size() == 5; }));
    EXPECT_TRUE(
        eventually([&] { return window().ofType(QStringLiteral("PaperCaseCard")).size() == 2; }));
    EXPECT_TRUE(eventually([&] { return window().shows(english("connected")); }));
    EXPECT_TRUE(window().shows(QStringLiteral("70")));
    for (const auto &archive : store().archives()) {
        // A row of the sidebar for each; a row of the home screen for all but the flagship.
        EXPECT_EQ(window().buttons(archive.title).size(),
                  archive.id == QLatin1String("foible") ? 1 : 2)
            << archive.title.toStdString();
    }

    EXPECT_TRUE(window().press(store().archives().first().title));
    EXPECT_EQ(store().destination(), store().archives().first().id);
    EXPECT_TRUE(window().press(english("tab.archives")));
    EXPECT_TRUE(
        eventually([&] { return window().ofType(QStringLiteral("PaperCaseCard")).size() == 2; }));
}

TEST_F(WindowTest, OpensWithoutAServiceAndFindsItLater) {
    LocalServiceProcess service;
    ASSERT_TRUE(service.start());
    service.stop();
    open(service.base());

    const auto alert = english("urlError.cannotConnectToHost");
    EXPECT_TRUE(eventually([&] { return window().shows(alert); }));
    EXPECT_TRUE(window().shows(english("offline")));
    EXPECT_TRUE(window().ofType(QStringLiteral("ArchiveRow")).isEmpty());
    EXPECT_TRUE(window().shows(english("browseAllShort")));
    EXPECT_TRUE(window().press(english("done")));
    EXPECT_TRUE(eventually([&] { return !window().shows(alert); }));
    EXPECT_EQ(store().notice(), std::nullopt);

    ASSERT_TRUE(service.start());
    EXPECT_TRUE(window().press(english("retry")));
    EXPECT_TRUE(
        eventually([&] { return window().ofType(QStringLiteral("PaperCaseCard")).size() == 2; }));

    // A further window of the same program connects again, for all of them.
    EXPECT_TRUE(window().openAnother());
    EXPECT_TRUE(
        eventually([&] { return window().ofType(QStringLiteral("ArchiveRow")).size() == 10; }));
}

TEST_F(WindowTest, FollowsLanguageAppearanceAndIdentity) {
    LocalServiceProcess service;
    ASSERT_TRUE(service.start());
    open(service.base());
    ASSERT_TRUE(eventually([&] { return store().isConnected(); }));

    // The command opens a new conversation from any screen.
    store().setDestination(QStringLiteral("wall"));
    store().newChat();
    EXPECT_EQ(store().destination(), QStringLiteral("chat"));

    store().setDestination(QStringLiteral("home"));
    ASSERT_TRUE(
        eventually([&] { return !window().ofType(QStringLiteral("LeadPanel")).isEmpty(); }));
    const auto before = window().ofType(QStringLiteral("ArchivesHomeView"));
    store().setLanguage(AppLanguage::de);
    EXPECT_EQ(window().ofType(QStringLiteral("ArchivesHomeView")), before)
        << "only the browser starts afresh with the language";
}

TEST_F(WindowTest, ComesToTheFrontWhenCalled) {
    open(QStringLiteral("http://127.0.0.1:1"));
    ASSERT_TRUE(eventually([&] { return store().notice() && !store().isConnecting(); }));
    auto *main = window().window();
    main->setWindowStates(Qt::WindowMinimized);
    QWindow other;
    other.show();
    other.requestActivate();
    ASSERT_TRUE(eventually([&] { return other.isActive(); }));

    WindowOpener::raise(QStringLiteral("permission"));
    EXPECT_TRUE(eventually([&] { return main->isActive(); }));
    EXPECT_EQ(main->windowStates(), Qt::WindowNoState);
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN"));
}
