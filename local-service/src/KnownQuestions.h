#pragma once

#include "Inquiry.h"

#include <QHash>
#include <QString>

class TextTables;

/// The questions that the program itself offers, in all its languages. The cases are written in
/// English, so that these are the only questions of other languages that are fully understood.
class KnownQuestions final {
public:
    struct Recognized {
        Inquiry::Kind kind = Inquiry::Kind::Question;
        /// In English. For an explanation only what is to be explained.
        QString question;
    };

    /// `interface` are the texts that the program shows.
    explicit KnownQuestions(const TextTables &interface);

    /// Whatever the program does not offer is a plain question and stays as it is.
    Recognized recognize(const QString &question) const;

private:
    QHash<QString, Recognized> m_questions;
    QStringList m_explainPrefixes;
};
