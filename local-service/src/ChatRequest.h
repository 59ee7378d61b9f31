#pragma once

#include "Inquiry.h"

#include "records/JsonFields.h"

#include <QList>
#include <QString>

#include <optional>

class KnownQuestions;

/// A question as the program sends it.
struct ChatRequest {
    struct Message {
        QString role;
        QString content;
    };

    struct Case {
        QString archive;
        QString id;
        std::optional<QString> accessKey;
    };

    /// The earlier turns of the talk are part of the body, and they may be long.
    static constexpr std::size_t greatestBody = 1024 * 1024;
    static constexpr qsizetype longestQuestion = 4000;

    QString question;
    QList<QString> archives;
    QString locale;
    /// The oldest first.
    QList<Message> messages;
    QList<Case> cases;

    /// Throws RequestError for what no program of ours sends.
    void check() const;
    Inquiry inquiry(const KnownQuestions &known) const;
};

template <>
struct JsonFields<ChatRequest::Message> {
    using Record = ChatRequest::Message;
    static constexpr auto table =
        std::make_tuple(jsonField("role", &Record::role), jsonField("content", &Record::content));
};

template <>
struct JsonFields<ChatRequest::Case> {
    using Record = ChatRequest::Case;
    static constexpr auto table =
        std::make_tuple(jsonField("archive", &Record::archive), jsonField("id", &Record::id),
                        jsonField("accessKey", &Record::accessKey));
};

template <>
struct JsonFields<ChatRequest> {
    static constexpr auto table = std::make_tuple(
        jsonField("question", &ChatRequest::question),
        jsonField("archives", &ChatRequest::archives), jsonField("locale", &ChatRequest::locale),
        jsonField("messages", &ChatRequest::messages), jsonField("cases", &ChatRequest::cases));
};
