#include "presentation/LineSpacing.h"

#include <QTextCursor>
#include <QTextDocument>

namespace {

bool isSpaced(const QTextBlockFormat &format, qreal extra) {
    return format.lineHeightType() == QTextBlockFormat::LineDistanceHeight &&
           format.lineHeight() == extra;
}

} // namespace

void LineSpacing::setDocument(QQuickTextDocument *document) {
    m_document = document;
    auto *text = document->textDocument();
    text->setLayoutEnabled(false);
    connect(text, &QTextDocument::contentsChanged, this, &LineSpacing::apply);
}

void LineSpacing::setExtra(qreal extra) {
    if (m_extra == extra)
        return;
    m_extra = extra;
    if (m_document && m_document->textDocument()->isLayoutEnabled())
        apply();
    Q_EMIT extraChanged();
}

/// A new text comes without the spacing. The change that this makes comes back here, and finds it.
void LineSpacing::apply() {
    auto *text = m_document->textDocument();
    QTextCursor cursor(text);
    if (!isSpaced(cursor.blockFormat(), m_extra)) {
        QTextBlockFormat format;
        format.setLineHeight(m_extra, QTextBlockFormat::LineDistanceHeight);
        // Otherwise the cursor asks for a layout in order to know its place.
        cursor.beginEditBlock();
        cursor.select(QTextCursor::Document);
        cursor.mergeBlockFormat(format);
        cursor.endEditBlock();
    }
    text->setLayoutEnabled(true);
}
