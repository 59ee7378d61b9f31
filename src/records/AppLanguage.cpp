#include "records/AppLanguage.h"

#include <algorithm>

namespace {

struct Entry {
    AppLanguage language;
    QLatin1String rawValue;
    QString name;
    bool isCJK;
};

const std::array<Entry, 10> &entries() {
    static const std::array<Entry, 10> table = {{
        {AppLanguage::system, QLatin1String("system"), QString(), false},
        {AppLanguage::en, QLatin1String("en"), QStringLiteral("English"), false},
        {AppLanguage::zhHans, QLatin1String("zh-Hans"), QStringLiteral(u"简体中文"), true},
        {AppLanguage::zhHant, QLatin1String("zh-Hant"), QStringLiteral(u"繁體中文"), true},
        {AppLanguage::ja, QLatin1String("ja"), QStringLiteral(u"日本語"), true},
        {AppLanguage::ko, QLatin1String("ko"), QStringLiteral(u"한국어"), true},
        {AppLanguage::es, QLatin1String("es"), QStringLiteral(u"Español"), false},
        {AppLanguage::fr, QLatin1String("fr"), QStringLiteral(u"Français"), false},
        {AppLanguage::de, QLatin1String("de"), QStringLiteral("Deutsch"), false},
        {AppLanguage::ptBR, QLatin1String("pt-BR"), QStringLiteral(u"Português (Brasil)"), false},
    }};
    return table;
}

const Entry &entry(AppLanguage language) {
    return entries()[static_cast<std::size_t>(language)];
}

std::optional<AppLanguage> match(const QString &code) {
    if (code.startsWith(QLatin1String("zh"))) {
        const bool traditional =
            code.contains(QLatin1String("hant")) || code.contains(QLatin1String("tw")) ||
            code.contains(QLatin1String("hk")) || code.contains(QLatin1String("mo"));
        return traditional ? AppLanguage::zhHant : AppLanguage::zhHans;
    }
    if (code.startsWith(QLatin1String("pt")))
        return AppLanguage::ptBR;
    for (const auto language : {AppLanguage::en, AppLanguage::ja, AppLanguage::ko, AppLanguage::es,
                                AppLanguage::fr, AppLanguage::de}) {
        if (code.startsWith(entry(language).rawValue))
            return language;
    }
    return std::nullopt;
}

} // namespace

QString AppLanguages::rawValue(AppLanguage language) {
    return entry(language).rawValue;
}

AppLanguage AppLanguages::saved(const std::optional<QString> &stored) {
    const auto found =
        std::find_if(entries().begin(), entries().end(), [&](const Entry &candidate) {
            return stored && candidate.rawValue == *stored;
        });
    return found == entries().end() ? AppLanguage::system : found->language;
}

QString AppLanguages::name(AppLanguage language) {
    return entry(language).name;
}

AppLanguage AppLanguages::resolve(const QStringList &preferred) {
    for (const auto &code : preferred) {
        if (const auto language = match(code.toLower()))
            return *language;
    }
    return AppLanguage::en;
}

AppLanguage AppLanguages::effective(AppLanguage language, const QStringList &preferred) {
    return language == AppLanguage::system ? resolve(preferred) : language;
}

QString AppLanguages::webCode(AppLanguage effectiveLanguage) {
    const bool chinese =
        effectiveLanguage == AppLanguage::zhHans || effectiveLanguage == AppLanguage::zhHant;
    return chinese ? QStringLiteral("zh") : QStringLiteral("en");
}

bool AppLanguages::isCJK(AppLanguage language) {
    return entry(language).isCJK;
}
