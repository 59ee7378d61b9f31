#include "presentation/TextSizing.h"

#include <QElapsedTimer>
#include <QTimerEvent>

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr int mostMilliseconds = 4;

qreal top(const QQuickItem *text, const QQuickItem *page) {
    return text->mapToItem(page, QPointF()).y();
}

} // namespace

// The toolkit's class of the view is not public: it is spoken to by name.

void TextSizing::setView(QQuickItem *view) {
    m_view = view;
    connect(view, SIGNAL(contentHeightChanged()), this, SLOT(keepPlace()));
    connect(view, SIGNAL(contentYChanged()), this, SLOT(forgetPlace()));
}

void TextSizing::setSize(qreal size) {
    if (m_size == size)
        return;
    m_size = size;
    m_texts.removeIf([](const QPointer<QQuickItem> &text) { return text.isNull(); });
    rememberPlace();
    m_waiting = m_texts;
    std::sort(m_waiting.begin(), m_waiting.end(), [this](const auto &one, const auto &other) {
        return distance(one) > distance(other);
    });
    while (!m_waiting.isEmpty() && distance(m_waiting.last()) == 0)
        resizeNearest();
    if (!m_waiting.isEmpty())
        m_timer.start(0, this);
    Q_EMIT sizeChanged();
}

void TextSizing::add(QQuickItem *text) {
    m_texts.append(text);
}

void TextSizing::timerEvent(QTimerEvent *) {
    QElapsedTimer elapsed;
    elapsed.start();
    while (!m_waiting.isEmpty() && elapsed.elapsed() < mostMilliseconds)
        resizeNearest();
    if (m_waiting.isEmpty())
        m_timer.stop();
}

void TextSizing::resizeNearest() {
    if (const auto text = m_waiting.takeLast())
        text->setProperty("size", m_size);
}

qreal TextSizing::viewValue(const char *name) const {
    return m_view->property(name).toReal();
}

/// How far the text is above or below what is in sight.
qreal TextSizing::distance(const QQuickItem *text) const {
    const qreal above = top(text, m_view);
    return std::max({above - m_view->height(), -above - text->height(), 0.0});
}

void TextSizing::rememberPlace() {
    m_place = {};
    if (m_texts.isEmpty() || viewValue("contentY") <= 0)
        return;
    // The uppermost that reaches below the upper edge; the texts come in no order.
    qreal highest = std::numeric_limits<qreal>::lowest();
    for (const auto &text : std::as_const(m_texts)) {
        const qreal above = -top(text, m_view);
        if (text->height() <= 0 || above >= text->height() || above <= highest)
            continue;
        highest = above;
        m_place = {text, above / text->height()};
    }
}

void TextSizing::keepPlace() {
    if (!m_place.text)
        return;
    const auto *page = m_view->property("contentItem").value<QQuickItem *>();
    const qreal y = top(m_place.text, page) + m_place.share * m_place.text->height();
    const qreal lowest = viewValue("contentHeight") + viewValue("bottomMargin") - m_view->height();
    m_keepingPlace = true;
    // The view would move to a whole number by itself, which would look like scrolling.
    m_view->setProperty("contentY", std::round(std::max(0.0, std::min(y, lowest))));
    m_keepingPlace = false;
}

/// Whoever scrolls chooses another place.
void TextSizing::forgetPlace() {
    if (!m_keepingPlace)
        m_place = {};
}
