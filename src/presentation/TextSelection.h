#pragma once

#include <QList>
#include <QPointF>
#include <QPointer>
#include <QQuickItem>
#include <QtQmlIntegration>

/// One selection over several texts of a page, as if they were a single text: a drag that begins in
/// one and ends in another takes the end of the first, all between, and the beginning of the last.
/// The texts are TextEdit items; their order is that of the page, from top to bottom.
class TextSelection : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(bool empty READ isEmpty NOTIFY changed FINAL)
    Q_PROPERTY(bool dragging READ isDragging NOTIFY draggingChanged FINAL)
    Q_PROPERTY(QPointF pointer READ pointer NOTIFY changed FINAL)

public:
    using QObject::QObject;

    /// A text that goes away leaves by itself.
    Q_INVOKABLE void add(QQuickItem *text);

    // Points are in the coordinates of the text that is named with them, and may lie outside of it.

    /// Drops what was selected and sets the place where the next selection starts.
    Q_INVOKABLE void begin(QQuickItem *text, QPointF point);
    /// Selects from that place to the point, which the pointer drags.
    Q_INVOKABLE void extend(QQuickItem *text, QPointF point);
    /// Selects to where the pointer is, to be called when the page has moved under it.
    Q_INVOKABLE void follow();
    /// Ends the drag.
    Q_INVOKABLE void finish();
    Q_INVOKABLE void selectWord(QQuickItem *text, QPointF point);
    Q_INVOKABLE void selectAll();
    Q_INVOKABLE void clear();

    bool isEmpty() const;
    bool isDragging() const { return m_dragging; }
    /// Where the pointer was last while it dragged, in the window's coordinates.
    QPointF pointer() const { return m_pointer; }
    /// What is selected, with a blank line between two texts.
    QString text() const;
    /// Puts it on the clipboard; nothing happens when nothing is selected.
    Q_INVOKABLE void copy() const;

Q_SIGNALS:
    void changed();
    /// A selection starts here: others may want to give way.
    void begun();
    void draggingChanged();
    /// The user asks at the point what can be done with the selection.
    void menuWanted(QQuickItem *text, QPointF point);

private:
    struct Place {
        QPointer<QQuickItem> text;
        int position = 0;
    };

    QList<QQuickItem *> inPageOrder() const;
    /// The place in whichever text is nearest to a point of the window.
    Place place(QPointF point) const;
    void setDragging(bool dragging);
    void select(const Place &from, const Place &to);

    QList<QPointer<QQuickItem>> m_texts;
    Place m_anchor;
    QPointF m_pointer;
    bool m_dragging = false;
};
