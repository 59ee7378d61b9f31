#include "copy/Copy.h"
#include "service/Endpoints.h"
#include "tests/screens/OpenWindow.h"
#include "tests/screens/SampleCase.h"
#include "tests/store/SampleCatalogue.h"
#include "tests/support/Await.h"
#include "tests/support/FakeTransport.h"
#include "tests/support/TestPlatform.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QString english(const char *key) {
    return Copy::text(QLatin1String(key), AppLanguage::en);
}

/// A long case with two related ones.
CaseEntry longCase() {
    auto entry = SampleCase::entry();
    for (auto &section : entry.sections)
        section.body = u"A sentence that fills a good part of a line of the page. "_s.repeated(60);
    entry.related = QList<CaseCard>{SampleCase::card(u"tower"_s), SampleCase::card(u"canal"_s)};
    return entry;
}

class CaseReaderWindowTest : public testing::Test {
protected:
    CaseReaderWindowTest() {
        answer(Endpoint::health, SampleCatalogue::healthBody());
        answer(Endpoint::archives, SampleCatalogue::archivesBody());
        answer(Endpoint::search, Json::encode(SearchPage{{SampleCase::card()}, 1, false, 0, 2}));
    }

    void answer(const QString &path, const QByteArray &body) {
        const auto whole = QLatin1Char('/') + path;
        ASSERT_TRUE(eventually([&] { return m_system.transport.waiting(whole) > 0; }));
        m_system.transport.answer(whole, 200, body);
        settleEventLoop();
    }

    /// Opens the case of the home screen's card with the keyboard.
    void open(const CaseEntry &entry) {
        m_card = ofType("PaperCaseCard").value(0);
        ASSERT_NE(m_card, nullptr);
        m_card->forceActiveFocus();
        key(Qt::Key_Return);
        // What the card tells can be read before the case itself has come.
        EXPECT_NE(saying("SelectableText", SampleCase::card().title), nullptr);
        answer(Endpoint::caseEntry(entry.archive, entry.id), Json::encode(entry));
        // Made piece by piece, and then laid out with the next frame.
        ASSERT_TRUE(eventually([&] {
            auto *rest = ofType("ReaderRest").value(0);
            auto *body = ofType("ReaderBody").value(0);
            return rest && body && lowest() > 0 && rest->mapToItem(body, {}).y() > body->height();
        }));
    }

    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(m_window.window(), key, modifiers);
    }

    QList<QQuickItem *> ofType(const char *type) const {
        return m_window.ofType(QLatin1String(type));
    }

    /// The visible item that says this.
    QQuickItem *saying(const char *type, const QString &text) const {
        for (auto *item : ofType(type)) {
            if (item->property("text").toString() == text)
                return item;
        }
        return nullptr;
    }

    QQuickItem *scroll() const {
        for (auto *child : ofType("CaseReaderView").value(0)->childItems()) {
            if (child->property("contentY").isValid())
                return child;
        }
        return nullptr;
    }

    double lowest() const { return scroll()->property("lowest").toDouble(); }
    double position() const { return scroll()->property("contentY").toDouble(); }

    QQuickItem *focus() const { return m_window.window()->activeFocusItem(); }

    TestPlatform<FakeTransport> m_system;
    AppStore m_store{m_system.platform()};
    OpenWindow m_window{m_store};
    QQuickItem *m_card = nullptr;
};

} // namespace

TEST_F(CaseReaderWindowTest, TheKeyboardReadsTurnsAndGoesBackToWhereItWas) {
    const auto entry = longCase();
    open(entry);
    key(Qt::Key_Space);
    EXPECT_TRUE(eventually([&] { return position() > 100; }));
    key(Qt::Key_End);
    EXPECT_TRUE(eventually([&] { return position() == lowest(); }));
    key(Qt::Key_Home);
    EXPECT_TRUE(eventually([&] { return position() == 0; }));

    // One case out of another, and back again.
    const auto rows = m_window.buttons(entry.related->first().title);
    ASSERT_EQ(rows.size(), 1);
    rows.first()->forceActiveFocus();
    key(Qt::Key_Return);
    EXPECT_EQ(ofType("CaseReaderView").size(), 2);
    const auto tower = SampleCase::entry(u"tower"_s);
    answer(Endpoint::caseEntry(tower.archive, tower.id), Json::encode(tower));
    EXPECT_TRUE(eventually([&] { return ofType("ReaderRest").size() == 2; }));
    key(Qt::Key_Escape);
    EXPECT_TRUE(eventually([&] { return ofType("CaseReaderView").size() == 1; }));
    EXPECT_EQ(focus(), rows.first());
    key(Qt::Key_Escape);
    EXPECT_TRUE(eventually([&] { return ofType("CaseReaderView").isEmpty(); }));
    EXPECT_EQ(focus(), m_card);
}

TEST_F(CaseReaderWindowTest, TheContentsLeadToTheTopOfASection) {
    open(longCase());
    EXPECT_TRUE(m_window.press(english("contents")));
    key(Qt::Key_Down);
    key(Qt::Key_Down);
    key(Qt::Key_Return);
    auto *section = ofType("ReaderSection").value(1);
    const auto top = [&] { return section->mapToItem(scroll(), QPointF()).y(); };
    EXPECT_GT(top(), 100);
    EXPECT_TRUE(eventually([&] { return std::abs(top()) < 1; })) << top();
    EXPECT_EQ(focus(), m_window.buttons(english("contents")).value(0));
}

TEST_F(CaseReaderWindowTest, OneSelectionRunsOverSeveralTexts) {
    const auto entry = longCase();
    open(entry);
    auto *title = saying("SelectableText", entry.title);
    auto *summary = saying("SelectableText", entry.summary);
    ASSERT_TRUE(title && summary);
    const auto at = [](QQuickItem *item, QPointF point) {
        return item->mapToScene(point).toPoint();
    };
    auto *window = m_window.window();
    QTest::mousePress(window, Qt::LeftButton, {},
                      at(title, {-20, title->height() / 2}) + QPoint(21, 0));
    QTest::mouseMove(window, at(title, {40, 20}));
    QTest::mouseMove(window, at(summary, {summary->width() - 1, summary->height() / 2}));
    QTest::mouseRelease(window, Qt::LeftButton, {}, at(summary, {summary->width() - 1, 5}));
    key(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), entry.title + u"\n\n"_s + entry.summary);

    // The later sections come after the first frame.
    EXPECT_TRUE(eventually([&] {
        key(Qt::Key_A, Qt::ControlModifier);
        key(Qt::Key_C, Qt::ControlModifier);
        const auto all = QGuiApplication::clipboard()->text();
        return all.startsWith(entry.title) &&
               all.contains(entry.sections[1].title + u"\n\n"_s + entry.sections[1].body);
    }));
}

TEST_F(CaseReaderWindowTest, AnotherSizeOfTextOrWindowReachesWhatIsInSightFirstAndKeepsThePlace) {
    auto entry = longCase();
    for (int more = 0; more < 3; ++more)
        entry.sections += entry.sections;
    open(entry);
    scroll()->setProperty("contentY", std::round(lowest() / 2));
    const auto isInSight = [&](QQuickItem *text) {
        const auto y = text->mapToItem(scroll(), QPointF()).y();
        return y < scroll()->height() && y + text->height() > 0;
    };
    QList<QQuickItem *> texts;
    QQuickItem *first = nullptr;
    for (auto *text : ofType("SelectableText")) {
        if (!text->property("size").isValid())
            continue;
        texts.append(text);
        if (!first && isInSight(text))
            first = text;
    }
    ASSERT_GT(texts.size(), 10);
    ASSERT_NE(first, nullptr);
    const auto share = [&] { return -first->mapToItem(scroll(), QPointF()).y() / first->height(); };
    const auto before = share();

    m_store.setReadingSize(22);
    const auto has = [](QQuickItem *text) { return text->property("size").toInt() == 22; };
    for (auto *text : texts)
        EXPECT_TRUE(has(text) || !isInSight(text));
    EXPECT_FALSE(has(texts.first()));
    EXPECT_TRUE(eventually([&] { return std::all_of(texts.begin(), texts.end(), has); }));
    EXPECT_TRUE(eventually([&] { return std::abs(share() - before) < 0.01; }))
        << before << " became " << share();

    auto *const window = m_window.window();
    const auto height = first->height();
    const auto width = window->width();
    window->setWidth(window->minimumWidth() - 200);
    ASSERT_TRUE(eventually([&] { return first->height() > height; }));
    EXPECT_TRUE(eventually([&] { return std::abs(share() - before) < 0.01; }))
        << before << " became " << share();
    window->setWidth(width);
    EXPECT_TRUE(eventually([&] { return first->height() == height; }));
    EXPECT_TRUE(eventually([&] { return std::abs(share() - before) < 0.01; }))
        << before << " became " << share();
}

TEST_F(CaseReaderWindowTest, AMessageStandsAboveTheSheetAndLeavesItOpen) {
    open(longCase());
    EXPECT_TRUE(m_window.press(english("saveToWall")));
    EXPECT_TRUE(eventually([&] { return m_window.shows(english("saveNeedsAccount")); }));
    key(Qt::Key_Escape);
    EXPECT_TRUE(eventually([&] { return !m_window.shows(english("saveNeedsAccount")); }));
    EXPECT_EQ(m_store.notice(), std::nullopt);
    EXPECT_EQ(ofType("CaseReaderView").size(), 1);
    key(Qt::Key_End);
    EXPECT_TRUE(eventually([&] { return position() > 0; })) << "the keyboard is back in the sheet";
}

TEST_F(CaseReaderWindowTest, AskingLeavesEverySheet) {
    const auto entry = longCase();
    open(entry);
    EXPECT_TRUE(m_window.press(english("askHead")));
    EXPECT_TRUE(eventually([&] { return ofType("CaseReaderView").isEmpty(); }));
    EXPECT_EQ(m_store.destination(), u"chat"_s);
}
