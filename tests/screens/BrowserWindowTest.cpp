#include "tests/screens/ServiceWindow.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

/// The browser in the program's window, on the real service.
class BrowserWindowTest : public ServiceWindow {
protected:
    void SetUp() override {
        ServiceWindow::SetUp();
        m_store->setDestination(u"all"_s);
        ASSERT_TRUE(eventually([&] { return rows().size() > 3; }));
        activate();
    }

    QList<QQuickItem *> rows() const { return m_window->ofType("CaseRow"); }
    QQuickItem *field() const {
        return m_window->window()->findChild<QQuickItem *>(u"case-search"_s);
    }
    QString typed() const { return field()->property("text").toString(); }

    void type(const QString &text) {
        for (const auto letter : text)
            QTest::keyClick(m_window->window(), letter.toLatin1());
        settleEventLoop();
        m_system.clock.advance(250ms);
    }
};

} // namespace

TEST_F(BrowserWindowTest, TheKeyboardSearchesChoosesAndOpens) {
    m_window->press(Qt::Key_F, Qt::ControlModifier);
    ASSERT_EQ(m_window->focus(), field());
    type(u"bridge"_s);
    ASSERT_TRUE(eventually([&] { return rows().size() > 1 && rows().size() < 5; }));
    EXPECT_TRUE(m_window->shows(u"%1 %2"_s.arg(rows().size()).arg(english("columnCases"))));

    m_window->press(Qt::Key_Down);
    const auto first = m_window->focus()->property("title").toString();
    ASSERT_FALSE(first.isEmpty()) << "the keyboard is at a row of the list";
    m_window->press(Qt::Key_Down);
    const auto second = m_window->focus()->property("title").toString();
    EXPECT_NE(second, first);
    EXPECT_TRUE(m_window->shows(english("chooseCase")));
    m_window->press(Qt::Key_Return);
    EXPECT_TRUE(m_window->focus()->property("chosen").toBool());
    EXPECT_FALSE(m_window->shows(english("chooseCase"))) << "the case is at the right";

    m_window->press(Qt::Key_F, Qt::ControlModifier);
    m_window->press(Qt::Key_Escape);
    EXPECT_EQ(typed(), QString());
    EXPECT_EQ(m_window->focus(), field());
    EXPECT_TRUE(eventually([&] { return rows().size() > 3; }));
}

TEST_F(BrowserWindowTest, AMenuGivesTheKeyboardBack) {
    const auto button = m_window->ofType("ArchiveMenu").first();
    button->forceActiveFocus(Qt::TabFocusReason);
    m_window->press(Qt::Key_Space);
    ASSERT_TRUE(eventually([&] { return m_window->focus() != button; }));
    m_window->press(Qt::Key_Down);
    m_window->press(Qt::Key_Down);
    m_window->press(Qt::Key_Return);
    EXPECT_TRUE(eventually([&] { return m_window->focus() == button; }));
    EXPECT_TRUE(m_window->shows(u"foible"_s)) << "limited to the first archive";
}

TEST_F(BrowserWindowTest, AnotherLanguageStartsAfresh) {
    m_window->press(Qt::Key_F, Qt::ControlModifier);
    type(u"bridge"_s);
    m_store->setLanguage(AppLanguage::de);
    ASSERT_TRUE(eventually([&] { return field() && typed().isEmpty() && rows().size() > 3; }));
    m_store->setDestination(u"makers"_s);
    ASSERT_TRUE(eventually([&] { return rows().size() > 3; }));
    EXPECT_TRUE(m_window->ofType("ArchiveMenu").isEmpty());
    m_store->setDestination(u"saved"_s);
    EXPECT_TRUE(eventually([&] { return m_window->ofType("FilterPicker").isEmpty(); }));
}
