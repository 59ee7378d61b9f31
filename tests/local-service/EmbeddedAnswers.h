#pragma once

#include "Answerer.h"

/// The answers that the program gives with the cases that are built into it.
struct EmbeddedAnswers {
    static QList<CaseData::File> files() {
        QList<CaseData::File> files;
        for (const QByteArray &text : CaseData::embedded())
            files.append(CaseData::decode(text));
        return files;
    }

    /// Made once, since that takes longer than any question.
    static const Answerer &answerer() {
        static const Answerer answerer(files());
        return answerer;
    }

    static QString example(const QString &archive, int number,
                           AppLanguage language = AppLanguage::en) {
        return answerer().words().text(QStringLiteral("askExamples.%1.%2").arg(archive).arg(number),
                                       language);
    }

    static Inquiry inquiry(const QString &question, const QStringList &archives = {},
                           AppLanguage language = AppLanguage::en) {
        ChatRequest request;
        request.question = question;
        request.archives = archives;
        request.locale = AppLanguages::rawValue(language);
        return answerer().inquiry(request);
    }

    static QStringList ids(const Answer &answer) {
        QStringList ids;
        for (const CaseCard &card : answer.references)
            ids.append(card.id);
        return ids;
    }
};
