#include "service/Endpoints.h"
#include "tests/screens/OpenWindow.h"
#include "tests/screens/SampleCase.h"
#include "tests/store/SampleCatalogue.h"
#include "tests/store/StoreTest.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

/// A long case with two related ones.
CaseEntry longCase() {
    auto entry = SampleCase::entry();
    for (auto &section : entry.sections)
        section.body = u"A sentence that fills a good part of a line of the page. "_s.repeated(60);
    entry.related = QList<CaseCard>{SampleCase::card(u"tower"_s), SampleCase::card(u"canal"_s)};
    return entry;
}

class CaseReaderWindowTest : public StoreTest {
protected:
    CaseReaderWindowTest() {
        answer(Endpoint::health, SampleCatalogue::healthBody());
        answer(Endpoint::archives, SampleCatalogue::archivesBody());
        answer(Endpoint::search, Json::encode(SearchPage{{SampleCase::card()}, 1, false, 0, 2}));
    }

    void answer(const QString &path, const QByteArray &body) {
        const auto whole = QLatin1Char('/') + path;
        ASSERT_TRUE(eventually([&] { return system.transport.waiting(whole) > 0; }));
        system.transport.answer(whole, 200, body);
        settleEventLoop();
    }

    /// Opens the case of the home screen's card with the keyboard.
    void open(const CaseEntry &entry) {
        m_card = m_window.ofType("PaperCaseCard").value(0);
        ASSERT_NE(m_card, nullptr);
        m_card->forceActiveFocus();
        m_window.press(Qt::Key_Return);
        // What the card tells can be read before the case itself has come.
        EXPECT_NE(saying("SelectableText", SampleCase::card().title), nullptr);
        answer(Endpoint::caseEntry(entry.archive, entry.id), Json::encode(entry));
        // Made piece by piece, and then laid out with the next frame.
        ASSERT_TRUE(eventually([&] {
            auto *rest = m_window.ofType("ReaderRest").value(0);
            auto *body = m_window.ofType("ReaderBody").value(0);
            return rest && body && lowest() > 0 && rest->mapToItem(body, {}).y() > body->height();
        }));
    }

    /// The visible item that says this.
    QQuickItem *saying(const char *type, const QString &text) const {
        for (auto *item : m_window.ofType(type)) {
            if (item->property("text").toString() == text)
                return item;
        }
        return nullptr;
    }

    QQuickItem *scroll() const {
        for (auto *child : m_window.ofType("CaseReaderView").value(0)->childItems()) {
            if (child->property("contentY").isValid())
                return child;
        }
        return nullptr;
    }

    double lowest() const { return scroll()->property("lowest").toDouble(); }
    double position() const { return scroll()->property("contentY").toDouble(); }

    OpenWindow m_window{store};
    QQuickItem *m_card = nullptr;
};

} // namespace

TEST_F(CaseReaderWindowTest, TheKeyboardReadsTurnsAndGoesBackToWhereItWas) {
    const auto entry = longCase();
    open(entry);
    m_window.press(Qt::Key_Space);
    EXPECT_TRUE(eventually([&] { return position() > 100; }));
    m_window.press(Qt::Key_End);
    EXPECT_TRUE(eventually([&] { return position() == lowest(); }));
    m_window.press(Qt::Key_Home);
    EXPECT_TRUE(eventually([&] { return position() == 0; }));

    // One case out of another, and back again.
    const auto rows = m_window.buttons(entry.related->first().title);
    ASSERT_EQ(rows.size(), 1);
    rows.first()->forceActiveFocus();
    m_window.press(Qt::Key_Return);
    EXPECT_EQ(m_window.ofType("CaseReaderView").size(), 2);
    const auto tower = SampleCase::entry(u"tower"_s);
    answer(Endpoint::caseEntry(tower.archive, tower.id), Json::encode(tower));
    EXPECT_TRUE(eventually([&] { return m_window.ofType("ReaderRest").size() == 2; }));
    m_window.press(Qt::Key_Escape);
    EXPECT_TRUE(eventually([&] { return m_window.ofType("CaseReaderView").size() == 1; }));
    EXPECT_EQ(m_window.focus(), rows.first());
    m_window.press(Qt::Key_Escape);
    EXPECT_TRUE(eventually([&] { return m_window.ofType("CaseReaderView").isEmpty(); }));
    EXPECT_EQ(m_window.focus(), m_card);
}

TEST_F(CaseReaderWindowTest, TheContentsLeadToTheTopOfASection) {
    open(longCase());
    EXPECT_TRUE(m_window.press(text("contents")));
    m_window.press(Qt::Key_Down);
    m_window.press(Qt::Key_Down);
    m_window.press(Qt::Key_Return);
    auto *section = m_window.ofType("ReaderSection").value(1);
    const auto top = [&] { return section->mapToItem(scroll(), QPointF()).y(); };
    EXPECT_GT(top(), 100);
    EXPECT_TRUE(eventually([&] { return std::abs(top()) < 1; })) << top();
    EXPECT_EQ(m_window.focus(), m_window.buttons(text("contents")).value(0));
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
    m_window.press(Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), entry.title + u"\n\n"_s + entry.summary);

    // The later sections come after the first frame.
    EXPECT_TRUE(eventually([&] {
        m_window.press(Qt::Key_A, Qt::ControlModifier);
        m_window.press(Qt::Key_C, Qt::ControlModifier);
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
    for (auto *text : m_window.ofType("SelectableText")) {
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

    store.setReadingSize(22);
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
    EXPECT_TRUE(m_window.press(text("saveToWall")));
    EXPECT_TRUE(eventually([&] { return m_window.shows(text("saveNeedsAccount")); }));
    m_window.press(Qt::Key_Escape);
    EXPECT_TRUE(eventually([&] { return !m_window.shows(text("saveNeedsAccount")); }));
    EXPECT_EQ(store.notice(), std::nullopt);
    EXPECT_EQ(m_window.ofType("CaseReaderView").size(), 1);
    m_window.press(Qt::Key_End);
    EXPECT_TRUE(eventually([&] { return position() > 0; })) << "the keyboard is back in the sheet";
}

TEST_F(CaseReaderWindowTest, AskingLeavesEverySheet) {
    const auto entry = longCase();
    open(entry);
    EXPECT_TRUE(m_window.press(text("askHead")));
    EXPECT_TRUE(eventually([&] { return m_window.ofType("CaseReaderView").isEmpty(); }));
    EXPECT_EQ(store.destination(), u"chat"_s);
}
