#pragma once

#include "records/AppLanguage.h"

#include <QHash>
#include <QMap>
#include <QString>
#include <QStringList>

/// Texts by key in each language, from folders of `<language>.json` files.
class TextTables final {
public:
    using Table = QHash<QString, QString>;

    explicit TextTables(const QStringList &folders);
    /// The texts that are built in: those that the program shows and those of the answers, whose
    /// keys begin with "answer.".
    static TextTables builtIn();

    /// Empty for a language without a file.
    Table table(AppLanguage language) const { return m_tables.value(language); }
    /// In this language or, where it lacks the key, in English. A key that no one has gives itself.
    QString text(const QString &key, AppLanguage language) const;

private:
    QMap<AppLanguage, Table> m_tables;
};
