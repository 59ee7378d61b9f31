// The open conversation.
#include "platform/Clock.h"
#include "store/AppStore.h"

void AppStore::newChat() {
    openEmptyChat();
    setDestination(QStringLiteral("chat"));
}

void AppStore::stopChat() {
    // Nothing is ever asked yet.
}

void AppStore::openEmptyChat() {
    m_chat = Conversation();
    m_chat.title = text(QStringLiteral("chat.new"));
    m_chat.updatedAt = Date::from(m_platform.clock.now());
    m_chatBaseVersion.reset();
    Q_EMIT chatChanged();
}
