#pragma once

#include "presentation/InlineMarkdown.h"

#include <QObject>
#include <QPointer>
#include <QQuickTextDocument>
#include <QTextCharFormat>
#include <QtQmlIntegration>

/// Shows a markdown text in the document of a TextEdit, in the reading type. A text that only grows
/// is read again from its last paragraph on, and no more of the document is touched than what
/// differs, so that a selection survives.
class AnswerDocument : public QObject {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QQuickTextDocument *document READ document WRITE setDocument REQUIRED FINAL)
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged FINAL)
    Q_PROPERTY(qreal size READ size WRITE setSize NOTIFY sizeChanged FINAL)
    Q_PROPERTY(qreal leading READ leading WRITE setLeading NOTIFY leadingChanged FINAL)

public:
    explicit AnswerDocument(QObject *parent = nullptr);

    QQuickTextDocument *document() const { return m_document; }
    void setDocument(QQuickTextDocument *document);

    QString text() const { return m_text; }
    void setText(const QString &text);

    /// Of the styled words, in points of the layout; the others have the font of the TextEdit.
    qreal size() const { return m_size; }
    void setSize(qreal size);

    /// Extra distance between lines, in points.
    qreal leading() const { return m_leading; }
    void setLeading(qreal leading);

Q_SIGNALS:
    void textChanged();
    void sizeChanged();
    void leadingChanged();

private:
    void spread();
    void showAgain();
    void show();
    void replaceUnsettled(const QList<StyledRun> &runs);
    QTextCharFormat formatOf(const StyledRun &run) const;

    QPointer<QQuickTextDocument> m_document;
    QString m_text;
    qreal m_size = 17;
    qreal m_leading = 0;

    /// Before this place of the text nothing can look different, however the text grows.
    qsizetype m_settledText = 0;
    /// The same place in the document.
    qsizetype m_settledPosition = 0;
    /// What the document shows from there on.
    QList<StyledRun> m_unsettled;
};
