#include "copy/Words.h"

#include "copy/Copy.h"

QString Words::text(const QString &key) const { return Copy::text(key, m_language); }

QString Words::number(qint64 value) const { return locale().toString(value); }

QString Words::textWithNumber(const QString &key, qint64 value) const {
    return text(key).replace(QLatin1String("{n}"), number(value));
}

QLocale Words::locale() const { return QLocale(AppLanguages::rawValue(m_language)); }
