#pragma once

#include <QBasicTimer>
#include <QList>
#include <QPointer>
#include <QQuickItem>
#include <QtQmlIntegration>

/// Gives the texts of a long page another size: those in sight at once, the others a few at a time
/// afterwards, the nearest first, so that no step of it holds the window. What is at the top of the
/// view stays there meanwhile, and when the column of the page takes another width.
class TextSizing : public QObject {
    Q_OBJECT
    QML_ELEMENT
    /// The Flickable with the page.
    Q_PROPERTY(QQuickItem *view READ view WRITE setView REQUIRED FINAL)
    Q_PROPERTY(qreal size READ size WRITE setSize NOTIFY sizeChanged FINAL)
    /// The column takes its width from here, so that the place is known before it does.
    Q_PROPERTY(qreal width READ width WRITE setWidth NOTIFY widthChanged FINAL)

public:
    using QObject::QObject;

    QQuickItem *view() const { return m_view; }
    /// To be set once.
    void setView(QQuickItem *view);

    /// In points of the layout.
    qreal size() const { return m_size; }
    void setSize(qreal size);

    qreal width() const { return m_width; }
    void setWidth(qreal width);

    /// Adds a text of the page, which has a property `size`, in reading order. One that goes away
    /// leaves by itself.
    Q_INVOKABLE void add(QQuickItem *text);

    /// For a text that is about to be made. Unlike the property it is not followed.
    Q_INVOKABLE qreal sizeToBegin() const { return m_size; }

Q_SIGNALS:
    void sizeChanged();
    void widthChanged();

protected:
    void timerEvent(QTimerEvent *event) override;

private Q_SLOTS:
    void keepPlace();
    void forgetPlace();

private:
    /// Where the upper edge of the view is.
    struct Place {
        /// The last one that begins above it.
        QPointer<QQuickItem> text;
        /// How much of the text is above it.
        qreal share = 0;
        /// How far it is below the end of the text.
        qreal beyond = 0;
    };

    qreal viewValue(const char *name) const;
    qreal distance(const QQuickItem *text) const;
    void rememberPlace();
    void resizeNearest();

    QPointer<QQuickItem> m_view;
    qreal m_size = 0;
    qreal m_width = 0;
    QList<QPointer<QQuickItem>> m_texts;
    /// The nearest is the last.
    QList<QPointer<QQuickItem>> m_waiting;
    QBasicTimer m_timer;
    Place m_place;
    bool m_keepingPlace = false;
};
