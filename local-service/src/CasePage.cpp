#include "CasePage.h"

#include "PageStyle.h"

#include "records/ArchiveStyle.h"

#include <QUrl>

namespace {

QString escaped(const QString &text) {
    return text.toHtmlEscaped();
}

QString paragraphs(const QString &text) {
    QString html;
    const auto parts = text.split(QStringLiteral("\n\n"), Qt::SkipEmptyParts);
    for (const QString &part : parts)
        html += QStringLiteral("<p>%1</p>\n").arg(escaped(part));
    return html;
}

QString header(const CaseEntry &entry) {
    return QStringLiteral("<header>\n<p class=\"label\">%1 · %2</p>\n<h1>%3</h1>\n"
                          "<p class=\"summary\">%4</p>\n</header>\n")
        .arg(escaped(ArchiveStyle::domain(entry.archive)), escaped(entry.era), escaped(entry.title),
             escaped(entry.summary));
}

QString section(const CaseEntry::Section &section) {
    return QStringLiteral("<section>\n<h2>%1</h2>\n%2</section>\n")
        .arg(escaped(section.title), paragraphs(section.body));
}

bool isWebAddress(const QString &text) {
    const QUrl url(text, QUrl::StrictMode);
    return url.isValid() && !url.host().isEmpty() &&
           (url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http"));
}

QString source(const CaseEntry::Source &source) {
    QString title = escaped(source.title);
    if (isWebAddress(source.url))
        title = QStringLiteral("<a href=\"%1\" rel=\"noreferrer\">%2</a>")
                    .arg(escaped(source.url), title);
    QStringList details;
    if (source.publisher)
        details << *source.publisher;
    if (source.date)
        details << *source.date;
    if (details.isEmpty())
        return QStringLiteral("<li>%1</li>\n").arg(title);
    return QStringLiteral("<li>%1 <small>%2</small></li>\n")
        .arg(title, escaped(details.join(QStringLiteral(", "))));
}

QString sources(const QList<CaseEntry::Source> &list) {
    if (list.isEmpty())
        return {};
    QString items;
    for (const auto &entry : list)
        items += source(entry);
    return QStringLiteral("<section>\n<h2>Sources</h2>\n<ul>\n%1</ul>\n</section>\n").arg(items);
}

} // namespace

QByteArray CasePage::style() {
    return PageStyle::base() +
           QByteArrayLiteral(
               "h2{font-size:1.2rem;margin:2.5rem 0 .5rem;padding-top:1rem;"
               "border-top:1px solid var(--line)}"
               ".summary{font-size:1.3rem;color:var(--dim)}"
               ".trade{font-family:system-ui,sans-serif;font-size:1.35rem;font-weight:600}"
               "a{color:inherit}ul{padding-left:1.2rem}li{margin:.6rem 0}");
}

QByteArray CasePage::html(const CaseEntry &entry) {
    QString body = header(entry);
    if (entry.tradeOut)
        body += QStringLiteral("<p class=\"trade\">%1</p>\n").arg(escaped(*entry.tradeOut));
    if (entry.relevance)
        body += paragraphs(*entry.relevance);
    for (const auto &part : entry.sections)
        body += section(part);
    body += sources(entry.sources);

    return QStringLiteral("<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
                          "<meta name=\"viewport\" content=\"width=device-width\">\n"
                          "<title>%1 · Quillmere</title>\n<style>%2</style>\n</head>\n<body>\n"
                          "<main>\n%3</main>\n</body>\n</html>\n")
        .arg(escaped(entry.title), QString::fromLatin1(style()), body)
        .toUtf8();
}
