#pragma once

#include "platform/Preferences.h"

#include <QHash>

class MemoryPreferences final : public Preferences {
public:
    std::optional<QString> value(const QString &key) const override {
        const auto found = m_values.find(key);
        return found == m_values.end() ? std::nullopt : std::optional(*found);
    }
    void setValue(const QString &key, const QString &value) override { m_values[key] = value; }

    QStringList preferredLanguages() const override { return m_languages; }
    void setPreferredLanguages(const QStringList &languages) { m_languages = languages; }

private:
    QHash<QString, QString> m_values;
    QStringList m_languages{QStringLiteral("en-GB")};
};
