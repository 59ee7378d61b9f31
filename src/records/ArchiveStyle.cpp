#include "records/ArchiveStyle.h"

#include "BuildSettings.h"

const QStringList &ArchiveStyle::ids() {
    static const QStringList list = {QStringLiteral("foible"), QStringLiteral("lumen"),
                                     QStringLiteral("shift"), QStringLiteral("makers"),
                                     QStringLiteral("ventures")};
    return list;
}

std::uint32_t ArchiveStyle::color(const QString &id) {
    if (id == QLatin1String("lumen"))
        return 0x0032FF;
    if (id == QLatin1String("shift"))
        return 0xFF6347;
    if (id == QLatin1String("makers"))
        return 0xE6007E;
    if (id == QLatin1String("ventures"))
        return 0x12805C;
    return 0xFFE014;
}

QString ArchiveStyle::domain(const QString &id) {
    const char *suffix = BuildSettings::suffixDefault;
    if (id == QLatin1String("foible"))
        suffix = BuildSettings::suffixFoible;
    else if (id == QLatin1String("lumen"))
        suffix = BuildSettings::suffixLumen;
    else if (id == QLatin1String("shift"))
        suffix = BuildSettings::suffixShift;
    return id + QLatin1String(suffix);
}
