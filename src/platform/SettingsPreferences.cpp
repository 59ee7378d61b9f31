#include "platform/SettingsPreferences.h"

#include <QLocale>

SettingsPreferences::SettingsPreferences(const QString &name) : m_settings(name, name) {
    // A key must not be answered by some file that all programs of this machine share.
    m_settings.setFallbacksEnabled(false);
}

std::optional<QString> SettingsPreferences::value(const QString &key) const {
    const auto stored = m_settings.value(key);
    if (!stored.isValid())
        return std::nullopt;
    return stored.toString();
}

void SettingsPreferences::setValue(const QString &key, const QString &value) {
    m_settings.setValue(key, value);
}

QStringList SettingsPreferences::preferredLanguages() const {
    return QLocale::system().uiLanguages();
}
