#pragma once

#include "records/Conversation.h"

#include <QSet>
#include <QStringList>

/// The book of every text that was ever saved. Each edit writes a text that occurs nowhere else;
/// it is owed to the user until an edit that had seen it overwrites or deletes it.
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

    /// The owed texts that these conversations lack.
    QStringList missing(const QList<Conversation> &conversations) const {
        auto owed = m_owed;
        for (const auto &conversation : conversations) {
            for (const auto &text : texts(conversation))
                owed.remove(text);
        }
        return owed.values();
    }

private:
    /// Titles that were typed, and questions.
    static QStringList texts(const Conversation &conversation) {
        QStringList result;
        if (conversation.title.startsWith(QLatin1Char('T')))
            result.append(conversation.title);
        for (const auto &message : conversation.messages) {
            if (message.role == QLatin1String("user"))
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
    int m_last = 0;
};
