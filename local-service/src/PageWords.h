#pragma once

#include <QHash>
#include <QString>

/// The words of the pages on which accounts are made and used.
struct PageWords {
    /// The value of the element's language attribute.
    QString language;
    /// What the form hands on, so that the next page has the same language.
    QString code;

    QString registerTitle;
    QString registerText;
    QString name;
    QString password;
    QString passwordRule;
    QString repeatPassword;
    QString create;
    QString created;
    QString createdText;

    QString signInTitle;
    QString signInText;
    QString signIn;
    QString createAndSignIn;
    QString decline;

    /// From the code of a RequestError that a form can meet to a sentence.
    QHash<QString, QString> problems;

    /// A code that begins with "zh" stands for Chinese; everything else, also nothing, for English.
    static const PageWords &of(const QString &code);
};
