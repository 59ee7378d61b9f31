#pragma once

#include "records/AppLanguage.h"

#include <QList>
#include <QString>
#include <QStringList>

/// What somebody wants to know, apart from how it came over the wire.
struct Inquiry {
    enum class Kind {
        /// Whatever was typed.
        Question,
        /// One of the program's own suggestions, about the cases at hand.
        Explain,
        Reasons,
        Lessons,
        Summary,
    };

    struct CaseName {
        QString archive;
        QString id;
    };

    Kind kind = Kind::Question;
    /// In English where it is one of the questions that the program itself offers.
    QString question;
    /// What the asker said before, the latest first.
    QStringList earlier;
    /// Empty: all of them.
    QStringList archives;
    /// The cases at hand, in their order.
    QList<CaseName> evidence;
    /// Whether the asker pointed at these cases; otherwise they are what the last answer cited.
    bool aboutEvidence = false;
    /// What the answer's own sentences are written in.
    AppLanguage language = AppLanguage::en;
};
