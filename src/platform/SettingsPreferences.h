#pragma once

#include "platform/Preferences.h"

#include <QSettings>

/// Preferences in the platform's settings store, in a file or domain of the given name.
class SettingsPreferences final : public Preferences {
public:
    explicit SettingsPreferences(const QString &name);

    std::optional<QString> value(const QString &key) const override;
    void setValue(const QString &key, const QString &value) override;
    QStringList preferredLanguages() const override;

private:
    QSettings m_settings;
};
