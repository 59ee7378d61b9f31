#pragma once

#include "CaseSearch.h"

#include "records/Catalogue.h"

#include <QString>

#include <optional>

class Database;

/// The collection as the service's readers ask for it. Every operation may be called on any thread.
class CaseStore final {
public:
    explicit CaseStore(Database &database);

    qint64 total();
    QList<Archive> archives();
    SearchPage search(const CaseSearch &search);
    /// An empty archive stands for all of them, here and below.
    Facets facets(const QString &archive);
    QList<QString> categories(const QString &archive);
    /// The case with its related cards, but without its public address.
    std::optional<CaseEntry> find(const QString &archive, const QString &id);

private:
    Database &m_database;
};
