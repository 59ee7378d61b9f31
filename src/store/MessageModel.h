#pragma once

#include "records/Conversation.h"
#include "store/ListModel.h"

/// The messages of a conversation, in order of the talk.
class MessageModel final : public ListModel<ChatMessage> {
    Q_OBJECT

public:
    enum Role { messageId = Qt::UserRole, role, content, references, mode };

    using ListModel::ListModel;

    QHash<int, QByteArray> roleNames() const override;

protected:
    QString identity(const ChatMessage &message) const override { return message.id.text; }
    QVariant value(const ChatMessage &message, int role) const override;
};
