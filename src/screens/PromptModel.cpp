#include "screens/PromptModel.h"

#include "screens/ExampleQuestions.h"

#include <algorithm>

void PromptModel::setStore(AppStore *store) {
    m_store = store;
    connect(store, &AppStore::chattingChanged, this, &PromptModel::sendableChanged);
    connect(store, &AppStore::accountChanged, this, &PromptModel::sendableChanged);
    connect(store, &AppStore::chatChanged, this, &PromptModel::placeholderChanged);
    connect(store, &AppStore::selectedArchivesChanged, this, &PromptModel::placeholderChanged);
    connect(store, &AppStore::wordsChanged, this, &PromptModel::placeholderChanged);
    connect(store, &AppStore::quotaChanged, this, &PromptModel::quotaLineChanged);
    connect(store, &AppStore::wordsChanged, this, &PromptModel::quotaLineChanged);
    Q_EMIT sendableChanged();
    Q_EMIT placeholderChanged();
    Q_EMIT quotaLineChanged();
}

void PromptModel::setPrompt(const QString &prompt) {
    if (m_prompt == prompt)
        return;
    m_prompt = prompt;
    Q_EMIT promptChanged();
    Q_EMIT sendableChanged();
}

bool PromptModel::isSendable() const {
    return m_store && m_store->isSignedIn() && !m_store->isChatting() &&
           !m_prompt.trimmed().isEmpty();
}

void PromptModel::send() {
    if (!isSendable())
        return;
    const auto question = m_prompt.trimmed();
    setPrompt({});
    m_store->startChat(question);
}

QString PromptModel::placeholder() const {
    if (!m_store)
        return {};
    if (m_store->messageCount() > 0)
        return m_store->text(QStringLiteral("askFollowUpPlaceholder"));
    return m_store->text(QLatin1String("archive.ph.") + ExampleQuestions::archiveOf(*m_store));
}

QString PromptModel::quotaLine() const {
    if (!m_store || !m_store->quota())
        return {};
    const auto &quota = m_store->quota();
    if (quota->plan == QLatin1String("pro"))
        return m_store->text(QStringLiteral("askUnlimited"));
    const auto words = m_store->words();
    const auto limit = static_cast<double>(quota->limit);
    const double left = std::max(0.0, limit - static_cast<double>(quota->used));
    return words.text(QStringLiteral("quotaLeft"))
        .replace(QLatin1String("{left}"), words.number(left))
        .replace(QLatin1String("{limit}"), words.number(limit));
}
