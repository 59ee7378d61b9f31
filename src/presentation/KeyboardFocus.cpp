#include "presentation/KeyboardFocus.h"

namespace {

void give(QQuickItem *item, bool forward) {
    if (item)
        item->forceActiveFocus(forward ? Qt::TabFocusReason : Qt::BacktabFocusReason);
}

} // namespace

void KeyboardFocus::setWithin(QQuickItem *item) {
    m_within = item;
    connect(item, &QQuickItem::windowChanged, this, &KeyboardFocus::watch);
    watch(item->window());
}

void KeyboardFocus::watch(QQuickWindow *window) {
    if (m_window)
        m_window->disconnect(this);
    m_window = window;
    if (window)
        connect(window, &QQuickWindow::activeFocusItemChanged, this, &KeyboardFocus::look);
}

void KeyboardFocus::look() {
    auto *item = m_window->activeFocusItem();
    if (!item || !m_within || !m_within->isAncestorOf(item))
        return;
    // The toolkit's controls know how the keyboard came; their class is not public.
    const auto isMarked = item->property("visualFocus");
    if (!isMarked.isValid() || isMarked.toBool())
        Q_EMIT moved(item);
}

void KeyboardFocus::step(bool forward) {
    give(neighbour(m_window->activeFocusItem(), forward), forward);
}

void KeyboardFocus::goToEnd(bool forward) {
    auto *const begin = m_window->activeFocusItem();
    auto *end = begin;
    // Where nothing else takes the keyboard, the last one's neighbour is the first.
    for (auto *next = neighbour(begin, forward); next && next != begin;
         next = neighbour(next, forward))
        end = next;
    give(end, forward);
}

QQuickItem *KeyboardFocus::neighbour(QQuickItem *item, bool forward) const {
    auto *next = item->nextItemInFocusChain(forward);
    return m_within->isAncestorOf(next) ? next : nullptr;
}
