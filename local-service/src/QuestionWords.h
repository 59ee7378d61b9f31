#pragma once

#include <QString>
#include <QStringList>

/// What counts in a question and in the texts that may answer it.
namespace QuestionWords {

struct Term {
    /// The word as the asker wrote it.
    QString written;
    /// See WordRoot.
    QString root;
    /// Roots of other words for nearly the same thing.
    QStringList kin;
};

/// The words of the question that say what it is about, each root once, in their order. Common
/// words that any text has are left out.
QList<Term> terms(const QString &question);

/// The roots of a text, as often as they occur and without the common words.
QStringList roots(const QString &text);

/// Whether the text is an English sentence rather than one of another language. Names alone are
/// none.
bool looksEnglish(const QString &text);

} // namespace QuestionWords
