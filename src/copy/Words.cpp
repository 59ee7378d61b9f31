#include "copy/Words.h"

#include "copy/Copy.h"

namespace {

/// The toolkit has a long and a short form only: one tells the day of the week, the other hides the
/// century.
QString mediumDateFormat(AppLanguage language) {
    switch (language) {
    case AppLanguage::de:
        return QStringLiteral("dd.MM.yyyy");
    case AppLanguage::es:
    case AppLanguage::fr:
        return QStringLiteral("d MMM yyyy");
    case AppLanguage::ptBR:
        return QStringLiteral("d 'de' MMM 'de' yyyy");
    case AppLanguage::ja:
        return QStringLiteral("yyyy/MM/dd");
    case AppLanguage::ko:
        return QStringLiteral("yyyy. M. d.");
    case AppLanguage::zhHans:
    case AppLanguage::zhHant:
        return QStringLiteral("yyyy年M月d日");
    default:
        return QStringLiteral("MMM d, yyyy");
    }
}

} // namespace

QString Words::text(const QString &key) const {
    return Copy::text(key, m_language);
}

QString Words::number(double value) const {
    return locale().toString(static_cast<qint64>(value));
}

QString Words::textWithNumber(const QString &key, double value) const {
    return text(key).replace(QLatin1String("{n}"), number(value));
}

QString Words::mediumDate(const QDateTime &moment) const {
    return locale().toString(moment.toLocalTime().date(), mediumDateFormat(m_language));
}

QLocale Words::locale() const {
    return QLocale(AppLanguages::rawValue(m_language));
}
