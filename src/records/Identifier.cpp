#include "records/Identifier.h"

#include <QUuid>

Identifier Identifier::make() {
    return {QUuid::createUuid().toString(QUuid::WithoutBraces).toUpper()};
}

std::optional<Identifier> Identifier::parse(const QString &text) {
    constexpr qsizetype length = 36;
    if (text.size() != length)
        return std::nullopt;
    for (qsizetype at = 0; at < length; ++at) {
        const auto c = text[at].unicode();
        const bool dash = at == 8 || at == 13 || at == 18 || at == 23;
        const bool hexadecimal =
            (c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
        if (dash ? c != '-' : !hexadecimal)
            return std::nullopt;
    }
    return Identifier{text.toUpper()};
}
