#pragma once

#include "records/AppLanguage.h"

#include <QDateTime>
#include <QLocale>
#include <QMetaType>
#include <QString>

/// The words of one language, as a value: a screen that looks a text up through the store's
/// property `words` is drawn again when the language changes.
class Words {
    Q_GADGET

public:
    Words() = default;

    /// Takes an effective language.
    explicit Words(AppLanguage language) : m_language(language) {}

    AppLanguage language() const { return m_language; }

    Q_INVOKABLE QString text(const QString &key) const;

    /// A number in the language's way of writing it.
    Q_INVOKABLE QString number(double value) const;

    /// The text of the key with every "{n}" replaced by the number.
    Q_INVOKABLE QString textWithNumber(const QString &key, double value) const;

    /// The day of a moment here, in the language's medium form: the month in short, no time of day.
    QString mediumDate(const QDateTime &moment) const;

    /// Locale for dates and numbers.
    QLocale locale() const;

    bool operator==(const Words &) const = default;

private:
    AppLanguage m_language = AppLanguage::en;
};
