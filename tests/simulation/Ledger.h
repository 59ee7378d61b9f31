#pragma once

#include "records/Library.h"

#include <QSet>
#include <QStringList>

/// The book of all that was ever saved. Each edit of a conversation writes a text that occurs
/// nowhere else; it is owed to the user until an edit that had seen it overwrites or deletes it.
class Ledger final {
public:
    /// A text that has not been used yet; `kind` is its first letter.
    QString newText(QChar kind) { return kind + QString::number(++m_last); }

    /// What these conversations hold has been saved.
    void save(const QList<Conversation> &conversations) {
        for (const auto &conversation : conversations) {
            for (const auto &text : texts(conversation)) {
                if (!m_settled.contains(text))
                    m_owed.insert(text);
            }
        }
    }

    /// How many texts were saved, and how many of them are owed.
    int saved() const { return static_cast<int>((m_owed + m_settled).size()); }
    int owed() const { return static_cast<int>(m_owed.size()); }

    void overwriteTitle(const Conversation &conversation) { settle(conversation.title); }
    void remove(const Conversation &conversation) {
        for (const auto &text : texts(conversation))
            settle(text);
    }

    /// A card was put into an account's library, or taken out.
    void toggle(const CaseCard &card, bool in) { (in ? m_putIn : m_takenOut).insert(card.key); }

    /// What is owed and these lack, and the cards that they have and should not. Of a card that
    /// somebody put in and somebody took out nothing is said.
    QStringList missing(const QList<Conversation> &conversations,
                        const QList<CaseCard> &cards) const {
        auto owed = m_owed;
        for (const auto &conversation : conversations) {
            for (const auto &text : texts(conversation))
                owed.remove(text);
        }
        QSet<QString> keys;
        for (const auto &card : cards)
            keys.insert(card.key);
        return (owed + (m_putIn - m_takenOut - keys) + (keys - m_putIn)).values();
    }

private:
    /// Titles that were typed, and questions.
    static QStringList texts(const Conversation &conversation) {
        QStringList result;
        if (conversation.title.startsWith(QLatin1Char('T')))
            result.append(conversation.title);
        for (const auto &message : conversation.messages) {
            if (message.role == ChatMessage::user)
                result.append(message.content);
        }
        return result;
    }

    void settle(const QString &text) {
        m_settled.insert(text);
        m_owed.remove(text);
    }

    QSet<QString> m_owed;
    QSet<QString> m_settled;
    QSet<QString> m_putIn;
    QSet<QString> m_takenOut;
    int m_last = 0;
};
