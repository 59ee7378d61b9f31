#include "copy/Copy.h"
#include "platform/QtTransport.h"
#include "tests/screens/OpenWindow.h"
#include "tests/support/Await.h"
#include "tests/support/LocalServiceProcess.h"
#include "tests/support/TestPlatform.h"

#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

QString english(const QString &key) {
    return Copy::text(key, AppLanguage::en);
}

/// The browser in the program's window, on the real service.
class BrowserWindowTest : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(m_service.start());
        m_system.preferences.setValue(u"server"_s, m_service.base());
        m_store = std::make_unique<AppStore>(m_system.platform());
        m_window = std::make_unique<OpenWindow>(*m_store);
        m_store->setDestination(u"all"_s);
        ASSERT_TRUE(eventually([&] { return rows().size() > 3; }));
        m_window->window()->requestActivate();
        ASSERT_TRUE(eventually([&] { return m_window->window()->isActive(); }));
    }

    QList<QQuickItem *> rows() const { return m_window->ofType(u"CaseRow"_s); }
    QQuickItem *focus() const { return m_window->window()->activeFocusItem(); }
    QQuickItem *field() const {
        return m_window->window()->findChild<QQuickItem *>(u"case-search"_s);
    }
    QString typed() const { return field()->property("text").toString(); }

    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        QTest::keyClick(m_window->window(), key, modifiers);
    }

    void type(const QString &text) {
        for (const auto letter : text)
            QTest::keyClick(m_window->window(), letter.toLatin1());
        settleEventLoop();
        m_system.clock.advance(250ms);
    }

    LocalServiceProcess m_service;
    TestPlatform<QtTransport> m_system;
    std::unique_ptr<AppStore> m_store;
    std::unique_ptr<OpenWindow> m_window;
};

} // namespace

TEST_F(BrowserWindowTest, TheKeyboardSearchesChoosesAndOpens) {
    key(Qt::Key_F, Qt::ControlModifier);
    ASSERT_EQ(focus(), field());
    type(u"bridge"_s);
    ASSERT_TRUE(eventually([&] { return rows().size() > 1 && rows().size() < 5; }));
    EXPECT_TRUE(m_window->shows(u"%1 %2"_s.arg(rows().size()).arg(english(u"columnCases"_s))));

    key(Qt::Key_Down);
    const auto first = focus()->property("title").toString();
    ASSERT_FALSE(first.isEmpty()) << "the keyboard is at a row of the list";
    key(Qt::Key_Down);
    const auto second = focus()->property("title").toString();
    EXPECT_NE(second, first);
    EXPECT_TRUE(m_window->shows(english(u"chooseCase"_s)));
    key(Qt::Key_Return);
    EXPECT_TRUE(focus()->property("chosen").toBool());
    EXPECT_FALSE(m_window->shows(english(u"chooseCase"_s))) << "the case is at the right";

    key(Qt::Key_F, Qt::ControlModifier);
    key(Qt::Key_Escape);
    EXPECT_EQ(typed(), QString());
    EXPECT_EQ(focus(), field());
    EXPECT_TRUE(eventually([&] { return rows().size() > 3; }));
}

TEST_F(BrowserWindowTest, AMenuGivesTheKeyboardBack) {
    const auto button = m_window->ofType(u"ArchiveMenu"_s).first();
    button->forceActiveFocus(Qt::TabFocusReason);
    key(Qt::Key_Space);
    ASSERT_TRUE(eventually([&] { return focus() != button; }));
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    EXPECT_TRUE(eventually([&] { return focus() == button; }));
    EXPECT_TRUE(m_window->shows(u"foible"_s)) << "limited to the first archive";
}

TEST_F(BrowserWindowTest, AnotherLanguageStartsAfresh) {
    key(Qt::Key_F, Qt::ControlModifier);
    type(u"bridge"_s);
    m_store->setLanguage(AppLanguage::de);
    ASSERT_TRUE(eventually([&] { return field() && typed().isEmpty() && rows().size() > 3; }));
    m_store->setDestination(u"makers"_s);
    ASSERT_TRUE(eventually([&] { return rows().size() > 3; }));
    EXPECT_TRUE(m_window->ofType(u"ArchiveMenu"_s).isEmpty());
    m_store->setDestination(u"saved"_s);
    EXPECT_TRUE(eventually([&] { return m_window->ofType(u"FilterPicker"_s).isEmpty(); }));
}
