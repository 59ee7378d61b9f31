#include "presentation/KeyboardFocus.h"

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
