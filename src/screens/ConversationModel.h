#pragma once

#include "copy/Words.h"
#include "records/Conversation.h"
#include "store/ListModel.h"

/// Conversations as the history lists them.
class ConversationModel final : public ListModel<Conversation> {
    Q_OBJECT

public:
    enum Role {
        conversationId = Qt::UserRole,
        title,
        /// The last answer as it was written, empty without one.
        answer,
        /// When it was last saved, and the archives that it was asked against.
        origin
    };

    using ListModel::ListModel;

    /// Of the dates.
    void setWords(Words words);

    QHash<int, QByteArray> roleNames() const override;

protected:
    QString identity(const Conversation &conversation) const override {
        return conversation.id.text;
    }
    QVariant value(const Conversation &conversation, int role) const override;

private:
    QString originOf(const Conversation &conversation) const;

    Words m_words;
};
