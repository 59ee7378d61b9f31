#include "records/Wall.h"

#include "records/ArchiveStyle.h"
#include "records/Json.h"

std::optional<QString> WallItem::archiveID() const {
    if (!site)
        return std::nullopt;
    for (const auto &archive : ArchiveStyle::ids()) {
        const auto domain = ArchiveStyle::domain(archive);
        const auto dashed = QString(domain).replace(QLatin1Char('.'), QLatin1Char('-'));
        if (*site == domain || *site == archive || *site == dashed)
            return archive;
    }
    return std::nullopt;
}

std::optional<CaseCard> WallItem::caseCard() const {
    const auto archive = archiveID();
    if (!archive || !caseId)
        return std::nullopt;
    const auto summaryCard = card.value_or(WallCard());
    CaseCard result;
    result.id = *caseId;
    result.key = *archive + QLatin1Char(':') + *caseId;
    result.archive = *archive;
    result.title = title ? *title : summaryCard.title.value_or(*caseId);
    result.summary =
        summaryCard.highlight ? *summaryCard.highlight : summaryCard.problem.value_or(QString());
    result.era = summaryCard.meta.value_or(QString());
    result.locale = QStringLiteral("en");
    return result;
}

std::optional<SavedChat> WallItem::chat() const {
    if (kind != QLatin1String("chat") || !body)
        return std::nullopt;
    try {
        auto chat = Json::decode<SavedChat>(body->toUtf8());
        chat.id = id;
        chat.savedAt = createdAt;
        return chat;
    } catch (const DecodingError &) {
        return std::nullopt;
    }
}
