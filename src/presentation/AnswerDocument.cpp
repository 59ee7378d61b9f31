#include "presentation/AnswerDocument.h"

#include "presentation/Fonts.h"
#include "presentation/Ink.h"

#include <QTextCursor>
#include <QTextDocument>

#include <algorithm>

namespace {

/// The fixed-width type looks larger than the reading type of the same size.
constexpr qreal codeScale = 0.85;

qsizetype lengthOf(const QList<StyledRun> &runs) {
    qsizetype length = 0;
    for (const auto &run : runs)
        length += run.text.size();
    return length;
}

/// How many characters the two begin with that look the same.
qsizetype commonLength(const QList<StyledRun> &left, const QList<StyledRun> &right) {
    qsizetype length = 0;
    for (qsizetype at = 0; at < std::min(left.size(), right.size()); ++at) {
        if (!left[at].hasStyleOf(right[at]))
            return length;
        const auto &one = left[at].text;
        const auto &other = right[at].text;
        const auto end = std::mismatch(one.begin(), one.end(), other.begin(), other.end());
        length += end.first - one.begin();
        if (end.first != one.end() || end.second != other.end())
            return length;
    }
    return length;
}

} // namespace

AnswerDocument::AnswerDocument(QObject *parent) : QObject(parent) {
    connect(&Fonts::shared(), &Fonts::faceChanged, this, &AnswerDocument::showAgain);
    connect(&Ink::shared(), &Ink::darkChanged, this, &AnswerDocument::showAgain);
}

void AnswerDocument::setDocument(QQuickTextDocument *document) {
    m_document = document;
    document->textDocument()->setUndoRedoEnabled(false);
    spread();
    showAgain();
}

void AnswerDocument::setText(const QString &text) {
    if (m_text == text)
        return;
    const bool grows = text.startsWith(m_text);
    m_text = text;
    if (grows)
        show();
    else
        showAgain();
    Q_EMIT textChanged();
}

void AnswerDocument::setSize(qreal size) {
    if (m_size == size)
        return;
    m_size = size;
    showAgain();
    Q_EMIT sizeChanged();
}

void AnswerDocument::setLeading(qreal leading) {
    if (m_leading == leading)
        return;
    m_leading = leading;
    spread();
    Q_EMIT leadingChanged();
}

/// A paragraph that is put in takes this from the one before it.
void AnswerDocument::spread() {
    if (!m_document)
        return;
    QTextBlockFormat format;
    format.setLineHeight(m_leading, QTextBlockFormat::LineDistanceHeight);
    QTextCursor cursor(m_document->textDocument());
    cursor.select(QTextCursor::Document);
    cursor.mergeBlockFormat(format);
}

void AnswerDocument::showAgain() {
    m_settledText = 0;
    m_settledPosition = 0;
    m_unsettled.clear();
    show();
}

void AnswerDocument::show() {
    if (!m_document)
        return;
    QList<StyledRun> runs;
    qsizetype settledText = m_settledText;
    qsizetype settledRuns = 0;
    qsizetype previousText = settledText;
    qsizetype previousRuns = 0;
    for (auto at = m_settledText; at < m_text.size();) {
        const auto rest = QStringView(m_text).sliced(at);
        const auto paragraph = rest.first(InlineMarkdown::paragraphLength(rest));
        // Only once its first line is whole is it certain that this does not belong to the
        // paragraph before.
        const bool isCertain = paragraph.contains(u'\n');
        settledText = isCertain ? at : previousText;
        settledRuns = isCertain ? runs.size() : previousRuns;
        previousText = at;
        previousRuns = runs.size();
        runs += InlineMarkdown::read(paragraph);
        at += paragraph.size();
    }
    replaceUnsettled(runs);
    m_settledText = settledText;
    m_settledPosition += lengthOf(runs.first(settledRuns));
    m_unsettled = runs.sliced(settledRuns);
}

void AnswerDocument::replaceUnsettled(const QList<StyledRun> &runs) {
    auto kept = commonLength(m_unsettled, runs);
    QTextCursor cursor(m_document->textDocument());
    cursor.beginEditBlock();
    cursor.setPosition(static_cast<int>(m_settledPosition + kept));
    cursor.movePosition(QTextCursor::End, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    for (const auto &run : runs) {
        const auto skipped = std::min(kept, run.text.size());
        kept -= skipped;
        if (skipped < run.text.size())
            cursor.insertText(run.text.sliced(skipped), formatOf(run));
    }
    cursor.endEditBlock();
}

QTextCharFormat AnswerDocument::formatOf(const StyledRun &run) const {
    const auto face = Fonts::shared().face();
    QTextCharFormat format;
    if (run.code) {
        format.setFont(face.mono(m_size * codeScale, run.strong ? 700 : 400));
    } else if (run.emphasis || run.strong) {
        auto font = face.reading(m_size, run.strong ? 700 : 400, run.emphasis);
        // No cut is both, and a fallback family has no other weight of itself.
        if (run.strong && (run.emphasis || face.isCJK()))
            font.setBold(true);
        format.setFont(font);
    }
    if (!run.link.isEmpty()) {
        format.setAnchor(true);
        format.setAnchorHref(run.link.toString(QUrl::FullyEncoded));
        format.setForeground(Ink::shared().brand());
        format.setFontUnderline(true);
    }
    return format;
}
