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
    connect(document->textDocument(), &QTextDocument::contentsChanged, this, &LineSpacing::apply);
    apply();
}

void LineSpacing::setExtra(qreal extra) {
    if (m_extra == extra)
        return;
    m_extra = extra;
    apply();
    Q_EMIT extraChanged();
}

/// A new text comes without the spacing. The change that this makes comes back here, and finds it.
void LineSpacing::apply() {
    if (!m_document)
        return;
    QTextCursor cursor(m_document->textDocument());
    if (isSpaced(cursor.blockFormat(), m_extra))
        return;
    QTextBlockFormat format;
    format.setLineHeight(m_extra, QTextBlockFormat::LineDistanceHeight);
    cursor.select(QTextCursor::Document);
    cursor.mergeBlockFormat(format);
}
