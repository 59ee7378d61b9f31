#pragma once

#include "PageWords.h"

#include <QByteArray>
#include <QString>

/// The parts of a page with a form. Everything that is given as text is escaped. The pages need no
/// script.
namespace FormPage {

/// The one style of these pages.
QByteArray style();

/// A whole page; `body` is HTML.
QByteArray html(const PageWords &words, const QString &title, const QString &body);

QString paragraph(const QString &text);
/// A line that says what is wrong, read out at once; nothing for an empty text.
QString problem(const QString &text);
QString hiddenField(const char *name, const QString &value);
QString nameField(const PageWords &words, const QString &value);
/// `purpose` is what a password manager should take the field for.
QString passwordField(const char *name, const QString &label, const char *purpose,
                      const QString &rule = {});
/// `attributes` are HTML and may say what kind of button it is.
QString button(const QString &label, const char *attributes);

} // namespace FormPage
