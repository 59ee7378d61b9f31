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

void TextSizing::setWidth(qreal width) {
    if (m_width == width)
        return;
    rememberPlace();
    m_width = width;
    Q_EMIT widthChanged();
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

/// Until somebody scrolls, the place is the one that was chosen last, whatever has changed since.
void TextSizing::rememberPlace() {
    m_texts.removeIf([](const QPointer<QQuickItem> &text) { return text.isNull(); });
    if (m_place.text)
        return;
    qreal least = std::numeric_limits<qreal>::max();
    for (const auto &text : std::as_const(m_texts)) {
        const qreal above = -top(text, m_view);
        const qreal height = text->height();
        if (height <= 0 || above <= 0 || above >= least)
            continue;
        least = above;
        m_place = {text, std::min(1.0, above / height), std::max(0.0, above - height)};
    }
}

void TextSizing::keepPlace() {
    if (!m_place.text)
        return;
    const auto *page = m_view->property("contentItem").value<QQuickItem *>();
    const qreal y =
        top(m_place.text, page) + m_place.share * m_place.text->height() + m_place.beyond;
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
