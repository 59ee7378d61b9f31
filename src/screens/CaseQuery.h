#pragma once

#include "service/API.h"

#include <QStringList>

/// What the browser asks the catalogue for: a search text and the filters. An empty filter sets no
/// limit.
struct CaseQuery {
    QString text;
    /// The one archive that is being browsed.
    QString archive;
    QString category;
    /// First year of a decade as text, or "before1940". Counts only without a `year`.
    QString decade;
    QString year;
    QString sort;
    /// Sorted ids, where several archives are browsed at once.
    QStringList archives;

    /// The query of `v1/search` for the page that begins at the offset. The service decides how
    /// long a page is.
    std::vector<QueryItem> items(qsizetype offset, const QString &locale) const;

    bool operator==(const CaseQuery &) const = default;
};
