#pragma once

#include <QHash>
#include <QString>

#include <optional>

/// A UUID as text: upper case, 8-4-4-4-12, without braces. Compared as text, so the one form is
/// used throughout.
struct Identifier {
    QString text;

    static Identifier make();

    /// Reads the 36-character form in either case; absent for any other text.
    static std::optional<Identifier> parse(const QString &text);

    bool operator==(const Identifier &) const = default;
};

inline size_t qHash(const Identifier &identifier, size_t seed = 0) {
    return ::qHash(QStringView(identifier.text), seed);
}
