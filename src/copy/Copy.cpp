#include "copy/Copy.h"

#include <QFile>
#include <QJsonDocument>
#include <QJsonObject>

#include <array>
#include <mutex>

Copy::Table Copy::parseTable(const QByteArray &json) {
    const auto document = QJsonDocument::fromJson(json);
    if (!document.isObject())
        return {};
    const auto object = document.object();
    Table result;
    result.reserve(object.size());
    for (auto entry = object.begin(); entry != object.end(); ++entry) {
        if (!entry.value().isString())
            return {};
        result.insert(entry.key(), entry.value().toString());
    }
    return result;
}

const Copy::Table &Copy::table(AppLanguage language) {
    struct Slot {
        std::once_flag once;
        Table table;
    };
    static std::array<Slot, AppLanguages::allCases.size()> tables;

    auto &slot = tables[static_cast<std::size_t>(language)];
    std::call_once(slot.once, [&] {
        QFile file(QStringLiteral(":/Localized/%1.json").arg(AppLanguages::rawValue(language)));
        if (file.open(QIODevice::ReadOnly))
            slot.table = parseTable(file.readAll());
    });
    return slot.table;
}

QString Copy::text(const QString &key, AppLanguage language) {
    for (const auto candidate : {language, AppLanguage::en}) {
        const auto &texts = table(candidate);
        const auto found = texts.find(key);
        if (found != texts.end())
            return *found;
    }
    return key;
}

QString Copy::retold(const QString &text, AppLanguage before, AppLanguage after) {
    const auto key = table(before).key(text);
    return key.isEmpty() ? text : Copy::text(key, after);
}
