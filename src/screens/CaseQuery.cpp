#include "screens/CaseQuery.h"

std::vector<QueryItem> CaseQuery::items(qsizetype offset, const QString &locale) const {
    return {{QStringLiteral("q"), text},
            {QStringLiteral("archive"), archive},
            {QStringLiteral("category"), category},
            {QStringLiteral("archives"), archives.join(QLatin1Char(','))},
            {QStringLiteral("decade"), year.isEmpty() ? decade : QString()},
            {QStringLiteral("year"), year},
            {QStringLiteral("sort"), sort},
            {QStringLiteral("offset"), QString::number(offset)},
            {QStringLiteral("locale"), locale}};
}
