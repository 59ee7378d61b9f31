#include "FormPage.h"

#include "PageStyle.h"

QByteArray FormPage::style() {
    return PageStyle::base() +
           QByteArrayLiteral(
               "main{max-width:28rem}"
               "form{display:grid;gap:1.1rem;margin-top:2rem}"
               "label{display:block;font-family:system-ui,sans-serif;font-size:.95rem}"
               "small{display:block;margin-top:.3rem}"
               "input{display:block;box-sizing:border-box;width:100%;margin-top:.3rem;"
               "padding:.6rem .7rem;font:inherit;color:inherit;background:transparent;"
               "border:1px solid var(--dim);border-radius:.5rem}"
               "button{padding:.7rem 1rem;font:600 1rem/1.2 system-ui,sans-serif;cursor:pointer;"
               "color:inherit;background:transparent;border:1px solid var(--ink);"
               "border-radius:.5rem}"
               ".main{color:var(--paper);background:var(--ink)}"
               ":focus-visible{outline:3px solid var(--dim);outline-offset:2px}"
               ".problem{color:var(--warn);font-weight:600}");
}

QByteArray FormPage::html(const PageWords &words, const QString &title, const QString &body) {
    return QStringLiteral("<!DOCTYPE html>\n<html lang=\"%1\">\n<head>\n<meta charset=\"utf-8\">\n"
                          "<meta name=\"viewport\" content=\"width=device-width\">\n"
                          "<title>%2 · Quillmere</title>\n<style>%3</style>\n</head>\n<body>\n"
                          "<main>\n<p class=\"label\">Quillmere</p>\n<h1>%2</h1>\n%4</main>\n"
                          "</body>\n</html>\n")
        .arg(words.language, title.toHtmlEscaped(), QString::fromLatin1(style()), body)
        .toUtf8();
}

QString FormPage::paragraph(const QString &text) {
    return QStringLiteral("<p>%1</p>\n").arg(text.toHtmlEscaped());
}

QString FormPage::problem(const QString &text) {
    if (text.isEmpty())
        return {};
    return QStringLiteral("<p class=\"problem\" role=\"alert\">%1</p>\n").arg(text.toHtmlEscaped());
}

QString FormPage::hiddenField(const char *name, const QString &value) {
    return QStringLiteral("<input type=\"hidden\" name=\"%1\" value=\"%2\">\n")
        .arg(QLatin1String(name), value.toHtmlEscaped());
}

QString FormPage::nameField(const PageWords &words, const QString &value) {
    return QStringLiteral("<label>%1<input name=\"handle\" value=\"%2\" required "
                          "autocomplete=\"username\" autocapitalize=\"none\" "
                          "spellcheck=\"false\"></label>\n")
        .arg(words.name.toHtmlEscaped(), value.toHtmlEscaped());
}

QString FormPage::passwordField(const char *name, const QString &label, const char *purpose,
                                const QString &rule) {
    const auto hint =
        rule.isEmpty() ? QString() : QStringLiteral("<small>%1</small>").arg(rule.toHtmlEscaped());
    return QStringLiteral("<label>%1<input type=\"password\" name=\"%2\" required "
                          "autocomplete=\"%3\">%4</label>\n")
        .arg(label.toHtmlEscaped(), QLatin1String(name), QLatin1String(purpose), hint);
}

QString FormPage::button(const QString &label, const char *attributes) {
    return QStringLiteral("<button %1>%2</button>\n")
        .arg(QLatin1String(attributes), label.toHtmlEscaped());
}
