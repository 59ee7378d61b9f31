#include "screens/ConversationModel.h"

#include "screens/DomainList.h"

namespace {

QString lastAnswer(const Conversation &conversation) {
    const auto &messages = conversation.messages;
    for (auto message = messages.crbegin(); message != messages.crend(); ++message) {
        if (message->role == ChatMessage::assistant)
            return message->content;
    }
    return {};
}

} // namespace

void ConversationModel::setWords(Words words) {
    if (m_words == words)
        return;
    m_words = words;
    if (!items().isEmpty())
        Q_EMIT dataChanged(index(0), index(rowCount() - 1), {origin});
}

QHash<int, QByteArray> ConversationModel::roleNames() const {
    return {{conversationId, "conversationId"},
            {title, "title"},
            {answer, "answer"},
            {origin, "origin"}};
}

QString ConversationModel::originOf(const Conversation &conversation) const {
    const auto date = m_words.mediumDate(conversation.updatedAt.toDateTime());
    const auto domains = domainList(conversation.archives.value_or(QStringList()));
    return domains.isEmpty() ? date : date + QStringLiteral("   ") + domains;
}

QVariant ConversationModel::value(const Conversation &conversation, int role) const {
    switch (role) {
    case conversationId:
        return conversation.id.text;
    case title:
        return conversation.title;
    case answer:
        return lastAnswer(conversation);
    case origin:
        return originOf(conversation);
    default:
        return {};
    }
}
