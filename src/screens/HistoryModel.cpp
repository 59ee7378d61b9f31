#include "screens/HistoryModel.h"

#include <algorithm>

namespace {

QString wholeText(const Conversation &conversation) {
    QStringList parts{conversation.title};
    for (const auto &message : conversation.messages)
        parts.append(message.content);
    return parts.join(QLatin1Char(' '));
}

} // namespace

HistoryModel::HistoryModel(QObject *parent) : QObject(parent), m_filter(wholeText) {}

void HistoryModel::componentComplete() {
    m_conversations.setWords(m_store->words());
    m_conversations.replaceItems(matches());
    tellEmpty();
    prepareFilter();
    connect(m_store, &AppStore::libraryChanged, this, &HistoryModel::followLibrary);
    connect(m_store, &AppStore::wordsChanged, this, &HistoryModel::followLanguage);
}

void HistoryModel::setQuery(const QString &query) {
    if (m_query == query)
        return;
    m_query = query;
    Q_EMIT queryChanged();
    if (!m_store)
        return;
    const auto found = matches();
    if (found != m_conversations.items())
        m_conversations.rewriteItems(found);
    tellEmpty();
}

void HistoryModel::open(const QString &id) {
    if (const auto *conversation = find(id))
        m_store->openChat(*conversation);
}

void HistoryModel::rename(const QString &id, const QString &title) {
    if (const auto *conversation = find(id))
        m_store->renameConversation(conversation->id, title);
}

void HistoryModel::remove(const QString &id) {
    if (const auto *conversation = find(id))
        m_store->deleteConversation(*conversation);
}

QList<Conversation> HistoryModel::matches() {
    return m_filter.matches(m_store->library().conversations, m_query, m_store->words().locale());
}

void HistoryModel::prepareFilter() {
    m_filter.prepare(m_store->library().conversations, m_store->words().locale());
}

const Conversation *HistoryModel::find(const QString &id) const {
    const auto &conversations = m_store->library().conversations;
    const auto found =
        std::find_if(conversations.cbegin(), conversations.cend(),
                     [&](const Conversation &conversation) { return conversation.id.text == id; });
    return found == conversations.cend() ? nullptr : &*found;
}

void HistoryModel::followLibrary() {
    const auto found = matches();
    if (found != m_conversations.items())
        m_conversations.setItems(found);
    tellEmpty();
    prepareFilter();
}

void HistoryModel::followLanguage() {
    m_conversations.setWords(m_store->words());
    followLibrary();
}

void HistoryModel::tellEmpty() {
    if (m_empty == isEmpty())
        return;
    m_empty = isEmpty();
    Q_EMIT emptyChanged();
}
