#include "copy/Words.h"

#include "copy/Copy.h"

QString Words::text(const QString &key) const {
    return Copy::text(key, m_language);
}

QString Words::number(double value) const {
    return locale().toString(static_cast<qint64>(value));
}

QString Words::textWithNumber(const QString &key, double value) const {
    return text(key).replace(QLatin1String("{n}"), number(value));
}

QLocale Words::locale() const {
    return QLocale(AppLanguages::rawValue(m_language));
}
