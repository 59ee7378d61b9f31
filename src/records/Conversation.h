#pragma once

#include "records/Catalogue.h"
#include "records/Date.h"
#include "records/Identifier.h"

#include <optional>

/// One line of the chat stream. Which `type` carries which field is the stream's matter.
struct ChatEvent {
    QString type;
    std::optional<QString> text;
    std::optional<QList<CaseCard>> items;
    std::optional<QString> mode;
    std::optional<QString> message;
    std::optional<QString> archive;
    std::optional<QString> stage;
    std::optional<QString> summary;
};

/// One turn of a conversation. Empty content with references is valid: that is how cases enter a
/// conversation without a written answer.
struct ChatMessage {
    static constexpr QLatin1String user{"user"};
    static constexpr QLatin1String assistant{"assistant"};

    Identifier id = Identifier::make();
    /// One of the two above.
    QString role;
    /// For an assistant, the markdown answer as streamed so far.
    QString content;
    /// The cases that the answer cites.
    QList<CaseCard> references;
    /// How the answer was produced, as the service named it.
    std::optional<QString> mode;

    /// One with an id of its own.
    static ChatMessage make(const QString &role, const QString &content,
                            const QList<CaseCard> &references = {}) {
        ChatMessage message;
        message.role = role;
        message.content = content;
        message.references = references;
        return message;
    }

    bool operator==(const ChatMessage &) const = default;
};

/// One chat thread.
struct Conversation {
    Identifier id = Identifier::make();
    QString title;
    /// In order of the talk.
    QList<ChatMessage> messages;
    /// Moment of the last save.
    Date updatedAt;
    /// The archive ids that the chat was asked against, ascending.
    std::optional<QList<QString>> archives;
    /// The wall item that this conversation is pinned as.
    std::optional<QString> wallID;

    bool operator==(const Conversation &) const = default;
};

template <>
struct JsonFields<ChatEvent> {
    static constexpr auto table = std::make_tuple(
        jsonField("type", &ChatEvent::type), jsonField("text", &ChatEvent::text),
        jsonField("items", &ChatEvent::items), jsonField("mode", &ChatEvent::mode),
        jsonField("message", &ChatEvent::message), jsonField("archive", &ChatEvent::archive),
        jsonField("stage", &ChatEvent::stage), jsonField("summary", &ChatEvent::summary));
};

template <>
struct JsonFields<ChatMessage> {
    static constexpr auto table = std::make_tuple(
        jsonField("id", &ChatMessage::id), jsonField("role", &ChatMessage::role),
        jsonField("content", &ChatMessage::content),
        jsonField("references", &ChatMessage::references), jsonField("mode", &ChatMessage::mode));
};

template <>
struct JsonFields<Conversation> {
    static constexpr auto table = std::make_tuple(
        jsonField("id", &Conversation::id), jsonField("title", &Conversation::title),
        jsonField("messages", &Conversation::messages),
        jsonField("updatedAt", &Conversation::updatedAt),
        jsonField("archives", &Conversation::archives), jsonField("wallID", &Conversation::wallID));
};
