#pragma once

#include <QString>

/// One spelling for all the forms of an English word, so that "warned" finds "warnings" and "sank"
/// finds "sinking".
namespace WordRoot {

/// Takes a folded word (see SearchText). The result is for comparing only and seldom a word itself.
/// The rules are Porter's of 1980; irregular verbs come first by a list.
QString of(const QString &word);

} // namespace WordRoot
