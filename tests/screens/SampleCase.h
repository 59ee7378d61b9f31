#pragma once

#include "records/Catalogue.h"

/// A case as a service would tell it.
namespace SampleCase {

/// A case of the flagship archive, with the key "foible:<id>".
CaseCard card(const QString &id = QStringLiteral("bridge"));

/// The reply of a search that found these cases.
QByteArray searchPage(const QStringList &ids, int total, bool hasMore);

/// The case of the card, with three sections, the last of them a lesson, and one source.
CaseEntry entry(const QString &id = QStringLiteral("bridge"));

/// The path that the case is fetched from.
QString path(const QString &id = QStringLiteral("bridge"));

} // namespace SampleCase
