#pragma once

#include <QString>
#include <QStringList>

#include <optional>

/// The user's settings, plain texts under plain keys.
class Preferences {
public:
    virtual ~Preferences() = default;

    /// Absent when nothing is stored under the key.
    virtual std::optional<QString> value(const QString &key) const = 0;
    virtual void setValue(const QString &key, const QString &value) = 0;

    /// The system's language codes such as "pt-BR", most wanted first.
    virtual QStringList preferredLanguages() const = 0;
};
