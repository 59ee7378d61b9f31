#include "presentation/InlineMarkdown.h"

#include "presentation/WebURL.h"

#include <algorithm>
#include <cmark.h>
#include <memory>
#include <optional>

namespace {

/// Longer paragraphs (UTF-16 units) are shown as they are written: nobody writes them, and the
/// screen cannot wait for them.
constexpr qsizetype longestParagraph = 16'384;

constexpr qsizetype shortestFence = 3;

struct Deleter {
    void operator()(cmark_node *node) const { cmark_node_free(node); }
    void operator()(cmark_iter *iterator) const { cmark_iter_free(iterator); }
};

bool isBlankCharacter(QChar c) {
    return c == u' ' || c == u'\t' || c == u'\r' || c == u'\n';
}

bool isBlank(QStringView line) {
    return std::all_of(line.begin(), line.end(), isBlankCharacter);
}

/// With its end.
QStringView firstLine(QStringView text) {
    const auto end = text.indexOf(u'\n');
    return end < 0 ? text : text.first(end + 1);
}

/// How many backticks the line opens a fence with; 0 for a line that opens none.
qsizetype fenceLength(QStringView line) {
    line = line.trimmed();
    const auto end = std::find_if(line.begin(), line.end(), [](QChar c) { return c != u'`'; });
    const auto length = end - line.begin();
    return length < shortestFence || line.sliced(length).contains(u'`') ? 0 : length;
}

bool closesFence(QStringView line, qsizetype length) {
    line = line.trimmed();
    return line.size() == length && fenceLength(line) == length;
}

/// The length of a fence with all that it holds, up to the end of the text if it is not closed.
qsizetype fencedLength(QStringView text, qsizetype fence) {
    qsizetype length = firstLine(text).size();
    while (length < text.size()) {
        const auto line = firstLine(text.sliced(length));
        length += line.size();
        if (closesFence(line, fence))
            break;
    }
    return length;
}

bool isOpenFence(QStringView paragraph) {
    const auto fence = fenceLength(firstLine(paragraph));
    if (fence == 0)
        return false;
    const auto end = paragraph.trimmed();
    return end.size() == firstLine(end).size() ||
           !closesFence(end.sliced(end.lastIndexOf(u'\n') + 1), fence);
}

/// Stand at the start of each line and behind the blanks at its end while the parser reads it. They
/// count as blanks, so that marks beside them mean the same as at the end of a line; but they are
/// none of those that the parser drops there, and no block begins with one.
struct Guards {
    QChar front;
    QChar back;
};

std::optional<Guards> guardsFor(QStringView text) {
    QString free;
    // The form feed first: alone among them it may stand inside a link, before the title. But at
    // the end of a line it would be dropped.
    for (const char16_t candidate : {u'\f', u'\u1680', u'\u2005', u'\u2006', u'\u2004'}) {
        if (!text.contains(candidate))
            free += candidate;
    }
    return free.size() < 2 ? std::nullopt : std::optional(Guards{free[0], free[1]});
}

QByteArray guarded(QStringView paragraph, const Guards &guards) {
    QString text;
    text.reserve(paragraph.size() + 16);
    for (const auto line : paragraph.split(u'\n')) {
        text += guards.front;
        text += line;
        if (!line.isEmpty() && isBlankCharacter(line.back()))
            text += guards.back;
        text += u'\n';
    }
    return text.toUtf8();
}

/// Collects the runs of one paragraph while the parser's tree is walked.
class Runs final {
public:
    explicit Runs(const Guards &guards) : m_guards(guards) {}

    void visit(cmark_node *node, bool entering) {
        switch (cmark_node_get_type(node)) {
        case CMARK_NODE_TEXT:
        case CMARK_NODE_HTML_INLINE:
            append(textOf(cmark_node_get_literal(node)));
            break;
        case CMARK_NODE_CODE:
            m_style.code = true;
            append(codeOf(cmark_node_get_literal(node)));
            m_style.code = false;
            break;
        case CMARK_NODE_SOFTBREAK:
        case CMARK_NODE_LINEBREAK:
            append(QStringLiteral("\n"));
            break;
        case CMARK_NODE_EMPH:
            m_emphases += entering ? 1 : -1;
            m_style.emphasis = m_emphases > 0;
            break;
        case CMARK_NODE_STRONG:
            m_strongs += entering ? 1 : -1;
            m_style.strong = m_strongs > 0;
            break;
        case CMARK_NODE_LINK:
            m_style.link = entering ? linkOf(cmark_node_get_url(node)) : QUrl();
            break;
        default:
            break;
        }
    }

    /// The line end behind the paragraph has no style.
    void endLine() {
        m_style = {};
        append(QStringLiteral("\n"));
    }

    QList<StyledRun> take() { return std::move(m_runs); }

private:
    QString textOf(const char *literal) const {
        return QString::fromUtf8(literal).remove(m_guards.front).remove(m_guards.back);
    }

    /// The parser has made blanks of the line breaks; the guards tell where they were.
    QString codeOf(const char *literal) const {
        return QString::fromUtf8(literal)
            .remove(m_guards.back)
            .replace(QLatin1Char(' ') + QString(m_guards.front), QStringLiteral("\n"))
            .remove(m_guards.front);
    }

    QUrl linkOf(const char *destination) const {
        return webURL(textOf(destination)).value_or(QUrl());
    }

    void append(const QString &text) {
        if (text.isEmpty())
            return;
        if (!m_runs.isEmpty() && m_runs.last().hasStyleOf(m_style)) {
            m_runs.last().text += text;
            return;
        }
        m_runs.append(m_style);
        m_runs.last().text = text;
    }

    Guards m_guards;
    StyledRun m_style;
    int m_emphases = 0;
    int m_strongs = 0;
    QList<StyledRun> m_runs;
};

QList<StyledRun> raw(QStringView text) {
    StyledRun run;
    run.text = text.toString();
    return {run};
}

} // namespace

bool StyledRun::hasStyleOf(const StyledRun &other) const {
    return emphasis == other.emphasis && strong == other.strong && code == other.code &&
           link == other.link;
}

qsizetype InlineMarkdown::paragraphLength(QStringView text) {
    const auto line = firstLine(text);
    if (isBlank(line))
        return line.size();
    if (const auto fence = fenceLength(line); fence > 0)
        return fencedLength(text, fence);
    qsizetype length = line.size();
    while (length < text.size()) {
        const auto next = firstLine(text.sliced(length));
        if (isBlank(next) || fenceLength(next) > 0)
            break;
        length += next.size();
    }
    return length;
}

QList<StyledRun> InlineMarkdown::read(QStringView paragraph) {
    QString text = paragraph.toString();
    if (text.contains(u'\r')) {
        text.replace(QLatin1String("\r\n"), QLatin1String("\n"));
        text.replace(u'\r', u'\n');
    }
    const auto guards = guardsFor(text);
    if (isBlank(text) || text.size() > longestParagraph || !guards || isOpenFence(text))
        return raw(text);

    const bool endsLine = text.endsWith(u'\n');
    const auto source = guarded(QStringView(text).chopped(endsLine ? 1 : 0), *guards);
    const std::unique_ptr<cmark_node, Deleter> document(cmark_parse_document(
        source.constData(), static_cast<std::size_t>(source.size()), CMARK_OPT_DEFAULT));
    auto *root = cmark_node_first_child(document.get());
    if (!root || cmark_node_get_type(root) != CMARK_NODE_PARAGRAPH || cmark_node_next(root))
        return raw(text);

    Runs runs(*guards);
    const std::unique_ptr<cmark_iter, Deleter> iterator(cmark_iter_new(root));
    for (auto event = cmark_iter_next(iterator.get()); event != CMARK_EVENT_DONE;
         event = cmark_iter_next(iterator.get()))
        runs.visit(cmark_iter_get_node(iterator.get()), event == CMARK_EVENT_ENTER);
    if (endsLine)
        runs.endLine();
    return runs.take();
}
