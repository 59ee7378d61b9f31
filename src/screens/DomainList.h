#pragma once

#include "records/ArchiveStyle.h"

/// The domains of archives, as one line.
inline QString domainList(const QStringList &archives) {
    QStringList domains;
    for (const auto &archive : archives)
        domains.append(ArchiveStyle::domain(archive));
    return domains.join(QStringLiteral(" · "));
}
