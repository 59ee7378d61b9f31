#pragma once

#include "records/Catalogue.h"

#include <QStringList>

#include <optional>

struct Conversation;

/// One cited case inside a saved chat.
struct SavedCase {
    QString archive;
    QString id;
    QString title;
    std::optional<QString> org;
    /// Filled from a card's `era`.
    std::optional<QString> year;
    std::optional<QString> note;
    bool strong = true;
    /// The card's `accessKey`, not its `key`.
    std::optional<QString> key;

    bool operator==(const SavedCase &) const = default;
};

struct SavedTurn {
    QString role;
    QString content;

    bool operator==(const SavedTurn &) const = default;
};

/// The text of a pinned chat: a frozen copy that shares no identity with any conversation.
struct SavedChat {
    /// The wall item's id; absent before the first pin.
    std::optional<QString> id;
    /// The archive ids of the chat.
    QList<QString> lit;
    QString question;
    /// Every case cited, without repeats.
    QList<SavedCase> cases;
    /// The talk after the first message.
    QList<SavedTurn> turns;
    /// The wall item's `createdAt`; absent before the first pin.
    std::optional<qint64> savedAt;

    /// The text of a conversation to be pinned, limited to the given archives (none: all of them).
    /// `prior` is what the wall holds of it: its cases stay as they were pinned while cited.
    static SavedChat snapshot(const Conversation &conversation, const QStringList &archives,
                              const std::optional<SavedChat> &prior);

    /// The way back: a new conversation with ids of its own. Its date is left at nothing.
    Conversation conversation() const;

    bool operator==(const SavedChat &) const = default;
};

/// The summary that comes with a pinned case.
struct WallCard {
    std::optional<QString> meta;
    std::optional<QString> title;
    std::optional<QString> problem;
    std::optional<QString> highlight;

    bool operator==(const WallCard &) const = default;
};

/// One thing pinned to the wall.
struct WallItem {
    /// An id that begins with "pending:" marks an item made here and not yet confirmed.
    QString id;
    /// "chat" for a pinned chat; anything else is a pinned case.
    QString kind;
    /// The archive of a pinned case, in one of three forms: see archiveID().
    std::optional<QString> site;
    std::optional<QString> caseId;
    std::optional<QString> title;
    /// For a chat, the SavedChat as JSON text.
    std::optional<QString> body;
    std::optional<QString> url;
    std::optional<WallCard> card;
    /// Milliseconds since 1970-01-01T00:00:00 UTC.
    qint64 createdAt = 0;

    /// The archive that `site` names: by its domain, its id, or the domain with dashes for dots.
    std::optional<QString> archiveID() const;

    /// A card that can open the pinned case; absent without a known archive and a case id.
    std::optional<CaseCard> caseCard() const;

    /// The chat that the item holds, under the item's own id and date. A body that does not decode
    /// holds no chat.
    std::optional<SavedChat> chat() const;

    bool operator==(const WallItem &) const = default;
};

template <>
struct JsonFields<SavedCase> {
    static constexpr auto table =
        std::make_tuple(jsonField("archive", &SavedCase::archive), jsonField("id", &SavedCase::id),
                        jsonField("title", &SavedCase::title), jsonField("org", &SavedCase::org),
                        jsonField("year", &SavedCase::year), jsonField("note", &SavedCase::note),
                        jsonField("strong", &SavedCase::strong), jsonField("key", &SavedCase::key));
};

template <>
struct JsonFields<SavedTurn> {
    static constexpr auto table = std::make_tuple(jsonField("role", &SavedTurn::role),
                                                  jsonField("content", &SavedTurn::content));
};

template <>
struct JsonFields<SavedChat> {
    static constexpr auto table = std::make_tuple(
        jsonField("id", &SavedChat::id), jsonField("lit", &SavedChat::lit),
        jsonField("question", &SavedChat::question), jsonField("cases", &SavedChat::cases),
        jsonField("turns", &SavedChat::turns), jsonField("savedAt", &SavedChat::savedAt));
};

template <>
struct JsonFields<WallCard> {
    static constexpr auto table = std::make_tuple(
        jsonField("meta", &WallCard::meta), jsonField("title", &WallCard::title),
        jsonField("problem", &WallCard::problem), jsonField("highlight", &WallCard::highlight));
};

template <>
struct JsonFields<WallItem> {
    static constexpr auto table =
        std::make_tuple(jsonField("id", &WallItem::id), jsonField("kind", &WallItem::kind),
                        jsonField("site", &WallItem::site), jsonField("caseId", &WallItem::caseId),
                        jsonField("title", &WallItem::title), jsonField("body", &WallItem::body),
                        jsonField("url", &WallItem::url), jsonField("card", &WallItem::card),
                        jsonField("createdAt", &WallItem::createdAt));
};
