#include "presentation/Fonts.h"
#include "presentation/Ink.h"
#include "tests/screens/ServiceWindow.h"
#include "tests/store/StoreAccess.h"

using namespace Qt::StringLiterals;

namespace {

void collect(QQuickItem *item, QStringList &lines) {
    if (!item->isVisible())
        return;
    if (const auto text = item->property("text"); text.isValid() && item->width() > 0) {
        const auto font = item->property("font").value<QFont>();
        const auto color = item->property("color").value<QColor>();
        lines.append(u"%1 | %2 | %3 | %4 x %5"_s.arg(text.toString(), font.toString(), color.name())
                         .arg(qRound(item->width()))
                         .arg(qRound(item->height())));
    }
    for (auto *child : item->childItems())
        collect(child, lines);
}

/// Every visible text with its type, colour and size.
QString look(QQuickWindow *window) {
    QStringList lines;
    collect(window->contentItem(), lines);
    lines.sort();
    return lines.join(u'\n');
}

/// The program with a kept conversation.
class LiveSwitchTest : public ServiceWindow, public testing::WithParamInterface<const char *> {
protected:
    void SetUp() override {
        ServiceWindow::SetUp();
        Conversation kept;
        kept.title = u"A question"_s;
        kept.updatedAt = {12'345'678'000};
        StoreAccess::library(*m_store).conversations.append(kept);
        m_store->persist();
        m_store->setDestination(QLatin1String(GetParam()));
    }

    ~LiveSwitchTest() override { use(AppLanguage::en, false); }

    void use(AppLanguage language, bool dark) {
        m_store->setLanguage(language);
        Fonts::shared().setLanguage(m_store->effectiveLanguage());
        Ink::shared().setDark(dark);
    }

    bool isStill() const { return m_store->isConnected() && m_window->ofType("Spinner").isEmpty(); }
};

} // namespace

TEST_P(LiveSwitchTest, AWindowLooksLikeOneThatWasOpenedAfterTheChange) {
    ASSERT_TRUE(eventually([&] { return isStill(); }));
    const auto english = look(m_window->window());
    use(AppLanguage::ja, true);
    ASSERT_TRUE(m_window->openAnother());
    ASSERT_EQ(m_window->windows().size(), 2);
    const auto windows = m_window->windows();
    const auto isAlike = [&] { return isStill() && look(windows[0]) == look(windows[1]); };
    if (!eventually(isAlike))
        EXPECT_EQ(look(windows[0]).toStdString(), look(windows[1]).toStdString());
    EXPECT_NE(look(windows[0]), english);
}

INSTANTIATE_TEST_SUITE_P(Screens, LiveSwitchTest,
                         testing::Values("home", "makers", "chat", "wall", "history", "account"),
                         [](const auto &screen) { return std::string(screen.param); });
