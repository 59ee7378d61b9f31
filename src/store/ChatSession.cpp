// The open conversation.
#include "platform/Clock.h"
#include "store/AppStore.h"
#include "sync/LibrarySync.h"

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

void AppStore::saveChat() {
    if (m_chat.messages.isEmpty())
        return;
    m_chat.updatedAt = Date::from(m_platform.clock.now());
    m_library.conversations.removeIf(
        [&](const Conversation &conversation) { return conversation.id == m_chat.id; });
    m_library.conversations.prepend(m_chat);
    if (m_account)
        LibrarySync::enqueueConversation(m_chat, m_chatBaseVersion, m_library);
    Q_EMIT libraryChanged();
    Q_EMIT chatChanged();
    persist();
}

std::optional<qint64> AppStore::versionOf(const Identifier &conversation) const {
    if (!m_library.sync)
        return std::nullopt;
    const auto &versions = m_library.sync->versions;
    const auto found = versions.constFind(QStringLiteral("conversation|") + conversation.text);
    return found == versions.cend() ? std::nullopt : std::optional(*found);
}
