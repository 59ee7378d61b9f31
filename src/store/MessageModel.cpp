#include "store/MessageModel.h"

QHash<int, QByteArray> MessageModel::roleNames() const {
    return {{messageId, "messageId"},
            {role, "role"},
            {content, "content"},
            {references, "references"},
            {mode, "mode"}};
}

QVariant MessageModel::value(const ChatMessage &message, int wanted) const {
    switch (wanted) {
    case messageId:
        return message.id.text;
    case role:
        return message.role;
    case content:
        return message.content;
    case references:
        return QVariant::fromValue(message.references);
    case mode:
        return message.mode.value_or(QString());
    default:
        return {};
    }
}
