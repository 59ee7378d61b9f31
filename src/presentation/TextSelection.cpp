#include "presentation/TextSelection.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QTextBoundaryFinder>

#include <algorithm>
#include <limits>

namespace {

// The toolkit's class of a selectable text is not public: it is spoken to by name.

int length(const QQuickItem *text) {
    return text->property("length").toInt();
}

int positionAt(QQuickItem *text, QPointF point) {
    int position = 0;
    QMetaObject::invokeMethod(text, "positionAt", Q_RETURN_ARG(int, position),
                              Q_ARG(qreal, point.x()), Q_ARG(qreal, point.y()));
    return position;
}

void selectIn(QQuickItem *text, int from, int to) {
    if (from == to)
        QMetaObject::invokeMethod(text, "deselect");
    else
        QMetaObject::invokeMethod(text, "select", Q_ARG(int, from), Q_ARG(int, to));
}

QString selectedIn(const QQuickItem *text) {
    return text->property("selectedText").toString();
}

/// How far the text is above or below a height of the page.
qreal distance(const QQuickItem *text, qreal height) {
    const qreal top = text->mapToScene(QPointF()).y();
    const qreal bottom = top + text->height();
    return std::max({top - height, height - bottom, 0.0});
}

} // namespace

void TextSelection::add(QQuickItem *text) {
    m_texts.removeIf([](const QPointer<QQuickItem> &known) { return known.isNull(); });
    m_texts.append(text);
}

QList<QQuickItem *> TextSelection::inPageOrder() const {
    QList<QQuickItem *> texts;
    for (const auto &text : m_texts) {
        // One that is still being made is nowhere yet.
        if (text && text->window() && text->isVisible())
            texts.append(text);
    }
    std::stable_sort(texts.begin(), texts.end(),
                     [](const QQuickItem *one, const QQuickItem *other) {
                         return one->mapToScene(QPointF()).y() < other->mapToScene(QPointF()).y();
                     });
    return texts;
}

TextSelection::Place TextSelection::place(QPointF point) const {
    QQuickItem *nearest = nullptr;
    qreal best = std::numeric_limits<qreal>::max();
    for (auto *candidate : inPageOrder()) {
        const qreal away = distance(candidate, point.y());
        if (away < best) {
            best = away;
            nearest = candidate;
        }
    }
    if (!nearest)
        return {};
    return {nearest, positionAt(nearest, nearest->mapFromScene(point))};
}

void TextSelection::begin(QQuickItem *text, QPointF point) {
    clear();
    m_anchor = place(text->mapToScene(point));
    Q_EMIT begun();
}

void TextSelection::extend(QQuickItem *text, QPointF point) {
    m_pointer = text->mapToScene(point);
    setDragging(true);
    follow();
}

void TextSelection::follow() {
    if (m_anchor.text)
        select(m_anchor, place(m_pointer));
}

void TextSelection::finish() {
    setDragging(false);
}

void TextSelection::setDragging(bool dragging) {
    if (m_dragging == dragging)
        return;
    m_dragging = dragging;
    Q_EMIT draggingChanged();
}

void TextSelection::selectWord(QQuickItem *text, QPointF point) {
    begin(text, point);
    if (!m_anchor.text)
        return;
    const auto words = m_anchor.text->property("text").toString();
    QTextBoundaryFinder finder(QTextBoundaryFinder::Word, words);
    finder.setPosition(m_anchor.position);
    const bool isBefore = finder.isAtBoundary() &&
                          finder.boundaryReasons().testFlag(QTextBoundaryFinder::StartOfItem);
    const auto start = isBefore ? m_anchor.position : finder.toPreviousBoundary();
    const auto end = finder.toNextBoundary();
    m_anchor.position = static_cast<int>(std::max(start, qsizetype(0)));
    select(m_anchor, {m_anchor.text, end < 0 ? length(m_anchor.text) : static_cast<int>(end)});
}

void TextSelection::selectAll() {
    const auto texts = inPageOrder();
    if (texts.isEmpty())
        return;
    Q_EMIT begun();
    m_anchor = {texts.first(), 0};
    select(m_anchor, {texts.last(), length(texts.last())});
}

void TextSelection::clear() {
    for (const auto &text : std::as_const(m_texts)) {
        if (text)
            selectIn(text, 0, 0);
    }
    m_anchor = {};
    Q_EMIT changed();
}

void TextSelection::select(const Place &from, const Place &to) {
    const auto texts = inPageOrder();
    auto first = texts.indexOf(from.text);
    auto last = texts.indexOf(to.text);
    if (first < 0 || last < 0)
        return;
    int begin = from.position;
    int end = to.position;
    if (first > last || (first == last && begin > end)) {
        std::swap(first, last);
        std::swap(begin, end);
    }
    for (qsizetype at = 0; at < texts.size(); ++at) {
        if (at < first || at > last)
            selectIn(texts[at], 0, 0);
        else
            selectIn(texts[at], at == first ? begin : 0, at == last ? end : length(texts[at]));
    }
    Q_EMIT changed();
}

bool TextSelection::isEmpty() const {
    return std::all_of(m_texts.begin(), m_texts.end(), [](const QPointer<QQuickItem> &text) {
        return !text || selectedIn(text).isEmpty();
    });
}

QString TextSelection::text() const {
    QStringList parts;
    for (const auto *text : inPageOrder()) {
        if (const auto part = selectedIn(text); !part.isEmpty())
            parts.append(part);
    }
    return parts.join(QStringLiteral("\n\n"));
}

void TextSelection::copy() const {
    if (const auto words = text(); !words.isEmpty())
        QGuiApplication::clipboard()->setText(words);
}
