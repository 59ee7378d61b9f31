#include "screens/AnswerAnnouncement.h"

#include <utility>

void AnswerAnnouncement::setStore(AppStore *store) {
    m_store = store;
    // A conversation that is left ends its run first and is replaced right after: a turn later it
    // is plain whether the run ended by itself.
    connect(store, &AppStore::chattingChanged, this, &AnswerAnnouncement::followRun,
            Qt::QueuedConnection);
}

void AnswerAnnouncement::stop() {
    m_conversation.reset();
    m_store->stopChat();
}

void AnswerAnnouncement::followRun() {
    if (m_store->isChatting()) {
        m_conversation = m_store->chat().id;
        tell({});
        return;
    }
    const auto conversation = std::exchange(m_conversation, std::nullopt);
    if (conversation != m_store->chat().id || m_store->messageCount() == 0)
        return;
    if (m_store->chatError())
        tell(*m_store->chatError());
    else
        tell(m_store->text(QStringLiteral("answerArrived")));
}

void AnswerAnnouncement::tell(const QString &words) {
    if (m_words == words)
        return;
    m_words = words;
    Q_EMIT wordsChanged();
}
