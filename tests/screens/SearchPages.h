#pragma once

#include "records/Catalogue.h"

/// A case of the flagship archive, with the key "foible:<id>".
CaseCard sampleCard(const QString &id);

/// The reply of a search that found these cases.
QByteArray searchPage(const QStringList &ids, int total, bool hasMore);
