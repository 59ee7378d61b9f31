#include "records/Wall.h"

#include "records/ArchiveStyle.h"
#include "records/Conversation.h"
#include "records/Json.h"

#include <QSet>

#include <algorithm>

namespace {

SavedCase savedCase(const CaseCard &card, const QList<SavedCase> &prior) {
    for (const auto &pinned : prior) {
        if (pinned.archive == card.archive && pinned.id == card.id)
            return pinned;
    }
    SavedCase result;
    result.archive = card.archive;
    result.id = card.id;
    result.title = card.title;
    result.org = card.org;
    result.year = card.era;
    result.note = card.note.value_or(card.summary);
    result.strong = card.strong.value_or(true);
    result.key = card.accessKey;
    return result;
}

CaseCard caseCard(const SavedCase &saved) {
    CaseCard card;
    card.id = saved.id;
    card.key = saved.archive + QLatin1Char(':') + saved.id;
    card.archive = saved.archive;
    card.title = saved.title;
    card.summary = saved.note.value_or(QString());
    card.era = saved.year.value_or(QString());
    card.locale = QStringLiteral("en");
    card.strong = saved.strong;
    card.note = saved.note;
    card.accessKey = saved.key;
    card.org = saved.org;
    return card;
}

} // namespace

SavedChat SavedChat::snapshot(const Conversation &conversation, const QStringList &archives,
                              const std::optional<SavedChat> &prior) {
    SavedChat chat;
    chat.id = conversation.wallID;
    chat.lit = archives.isEmpty() ? ArchiveStyle::ids() : archives;
    if (!archives.isEmpty())
        std::sort(chat.lit.begin(), chat.lit.end());
    if (prior)
        chat.savedAt = prior->savedAt;

    QSet<QString> cited;
    for (const auto &entry : conversation.messages) {
        for (const auto &card : entry.references) {
            if (cited.contains(card.key))
                continue;
            cited.insert(card.key);
            chat.cases.append(savedCase(card, prior ? prior->cases : QList<SavedCase>()));
        }
    }

    const auto &messages = conversation.messages;
    const auto question =
        std::find_if(messages.begin(), messages.end(), [](const ChatMessage &candidate) {
            return candidate.role == ChatMessage::user;
        });
    chat.question = question == messages.end() ? conversation.title : question->content;
    for (qsizetype at = 1; at < messages.size(); ++at) {
        if (!messages[at].content.isEmpty())
            chat.turns.append({messages[at].role, messages[at].content});
    }
    return chat;
}

Conversation SavedChat::conversation() const {
    Conversation result;
    result.title = question;
    result.archives = lit;
    result.wallID = id;
    result.messages.append(ChatMessage::make(ChatMessage::user, question));
    if (!cases.isEmpty()) {
        auto evidence = ChatMessage::make(ChatMessage::assistant, {});
        for (const auto &saved : cases)
            evidence.references.append(caseCard(saved));
        result.messages.append(evidence);
    }
    for (const auto &turn : turns)
        result.messages.append(ChatMessage::make(turn.role, turn.content));
    return result;
}

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
