#pragma once

#include "records/AppLanguage.h"

#include <QHash>
#include <QString>

/// Every word that the interface shows, looked up by key. Callable from any thread.
namespace Copy {

using Table = QHash<QString, QString>;

/// The text of the key in the language, else in English, else the key itself: a caller sees a
/// missing text by comparing with the key. Takes an effective language.
QString text(const QString &key, AppLanguage language);

/// A text that was told in one language, as another tells it; what is in no table stays as it is.
QString retold(const QString &text, AppLanguage before, AppLanguage after);

/// The language's table, read once at its first use; empty when its file is missing or broken.
const Table &table(AppLanguage language);

/// One flat JSON object of texts; an empty table for anything else.
Table parseTable(const QByteArray &json);

} // namespace Copy
