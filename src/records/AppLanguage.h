#pragma once

#include <QString>
#include <QStringList>

#include <array>
#include <optional>

/// The interface languages, in the order in which they are offered.
enum class AppLanguage { system, en, zhHans, zhHant, ja, ko, es, fr, de, ptBR };

namespace AppLanguages {

inline constexpr std::array allCases = {AppLanguage::system, AppLanguage::en, AppLanguage::zhHans,
                                        AppLanguage::zhHant, AppLanguage::ja, AppLanguage::ko,
                                        AppLanguage::es,     AppLanguage::fr, AppLanguage::de,
                                        AppLanguage::ptBR};

/// "system", "en", "zh-Hans", ...: also the language's identity and the name of its text table.
QString rawValue(AppLanguage language);

/// The stored preference under "uiLanguage"; absent or unknown text means the system's choice.
AppLanguage saved(const std::optional<QString> &stored);

/// The language's own name. Empty for the system's choice, whose text is the copy key "langSystem".
QString name(AppLanguage language);

/// The first language of the program that a list of language codes asks for, English if none.
/// A code of a language that the program lacks is passed over.
AppLanguage resolve(const QStringList &preferred);

/// The language itself, or what the preferred codes resolve to for the system's choice. Its raw
/// value is the `locale` of every service request.
AppLanguage effective(AppLanguage language, const QStringList &preferred);

/// "zh" or "en", for the addresses of the program's web pages. Takes an effective language.
QString webCode(AppLanguage effectiveLanguage);

/// Chinese, Japanese or Korean. False for the system's choice: ask its effective language.
bool isCJK(AppLanguage language);

} // namespace AppLanguages
