#pragma once

#include <QObject>
#include <QPointer>
#include <QQuickTextDocument>
#include <QtQmlIntegration>

/// Spreads the lines of a text that can be selected, which has no property for it. The text is not
/// laid out before that, since it would have to be again.
class LineSpacing : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickTextDocument *document READ document WRITE setDocument REQUIRED FINAL)
    Q_PROPERTY(qreal extra MEMBER m_extra WRITE setExtra NOTIFY extraChanged FINAL)

public:
    using QObject::QObject;

    QQuickTextDocument *document() const { return m_document; }
    /// To be set once.
    void setDocument(QQuickTextDocument *document);

    /// Added to the distance of two lines, in points; may be negative.
    void setExtra(qreal extra);

Q_SIGNALS:
    void extraChanged();

private:
    void apply();

    QPointer<QQuickTextDocument> m_document;
    qreal m_extra = 0;
};
