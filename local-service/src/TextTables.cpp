#include "TextTables.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

TextTables::TextTables(const QStringList &folders) {
    for (const auto language : AppLanguages::allCases) {
        for (const QString &folder : folders) {
            QFile file(QStringLiteral("%1/%2.json").arg(folder, AppLanguages::rawValue(language)));
            if (!file.open(QIODevice::ReadOnly))
                continue;
            const auto object = QJsonDocument::fromJson(file.readAll()).object();
            auto &table = m_tables[language];
            for (auto entry = object.begin(); entry != object.end(); ++entry)
                table.insert(entry.key(), entry.value().toString());
        }
    }
}

TextTables TextTables::builtIn() {
    return TextTables({QStringLiteral(":/interface-words"), QStringLiteral(":/answer-words")});
}

QString TextTables::text(const QString &key, AppLanguage language) const {
    for (const auto candidate : {language, AppLanguage::en}) {
        const auto table = m_tables.constFind(candidate);
        if (table != m_tables.constEnd() && table->contains(key))
            return table->value(key);
    }
    return key;
}
