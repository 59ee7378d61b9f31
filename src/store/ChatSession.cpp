// The open conversation: its runs against the service, and its way into the library.
#include "platform/CancellationError.h"
#include "platform/Clock.h"
#include "platform/Start.h"
#include "platform/URLError.h"
#include "records/ArchiveStyle.h"
#include "service/LineReader.h"
#include "service/ServiceError.h"
#include "store/AppStore.h"
#include "store/FirstCharacters.h"
#include "sync/LibrarySync.h"

#include <algorithm>

namespace {

/// Characters of a title.
constexpr int longestQuestionTitle = 100;
constexpr int longestTypedTitle = 150;

} // namespace

struct AppStore::ChatRun {
    Identifier id;
    Identifier conversation;
    QString libraryKey;
    API api;
    QString question;
    QStringList archives;
    QString locale;
    QList<ChatMessage> earlier;
    /// Where the answer stands among the messages.
    qsizetype index = 0;
    std::stop_token stop;
};

void AppStore::setChat(const Conversation &chat) {
    m_growth.flush();
    if (m_chat == chat)
        return;
    m_chat = chat;
    m_messages.setItems(m_chat.messages);
    Q_EMIT chatChanged();
}

void AppStore::openEmptyChat() {
    Conversation conversation;
    conversation.title = text(QStringLiteral("chat.new"));
    conversation.updatedAt = Date::from(m_platform.clock.now());
    setChat(conversation);
    m_chatBaseVersion.reset();
}

void AppStore::startChat(const QString &question, const QList<CaseCard> &evidence) {
    const auto asked = question.trimmed();
    if (asked.isEmpty() || m_chatting)
        return;
    if (!m_account) {
        publish(m_chatError, text(QStringLiteral("askSigninMessage")), &AppStore::chatErrorChanged);
        return;
    }
    publish(m_chatError, {}, &AppStore::chatErrorChanged);
    publish(m_chatProgress, {}, &AppStore::chatProgressChanged);
    publish(m_chatting, true, &AppStore::chattingChanged);
    m_chatRun = Identifier::make();
    m_chatStop.request_stop();
    m_chatStop = std::stop_source();
    m_chatBaseVersion = LibrarySync::baseVersion(m_chat.id, m_library).value_or(0);

    auto chat = m_chat;
    chat.archives = selectedArchives();
    if (chat.messages.isEmpty())
        chat.title = firstCharacters(asked, longestQuestionTitle);
    auto earlier = chat.messages;
    // Only for the request, which sends the cases of the last message that cites any.
    if (!evidence.isEmpty())
        earlier.append(ChatMessage::make(ChatMessage::assistant, {}, evidence));
    chat.messages.append(ChatMessage::make(ChatMessage::user, asked));
    chat.messages.append(ChatMessage::make(ChatMessage::assistant, {}));
    setChat(chat);

    const ChatRun run{m_chatRun,
                      m_chat.id,
                      libraryKey(),
                      api(),
                      asked,
                      selectedArchives(),
                      locale(),
                      earlier,
                      m_chat.messages.size() - 1,
                      m_chatStop.get_token()};
    start(*this, [this, run] {
        if (run.stop.stop_requested())
            throw CancellationError();
        return runChat(run);
    });
}

bool AppStore::isCurrent(const ChatRun &run) const {
    // After a stop the store itself may be gone.
    return !run.stop.stop_requested() && m_chatRun == run.id && m_chat.id == run.conversation &&
           libraryKey() == run.libraryKey;
}

Task<void> AppStore::runChat(ChatRun run) {
    try {
        auto receiving = receiveAnswer(run);
        co_await receiving;
    } catch (const CancellationError &) {
        // Whoever cancelled knows.
    } catch (...) {
        if (isCurrent(run))
            publish(m_chatError, describe(std::current_exception()), &AppStore::chatErrorChanged);
    }
    if (!isCurrent(run))
        co_return;
    m_growth.flush();
    publish(m_chatting, false, &AppStore::chattingChanged);
    saveChat();
    beginRefreshQuota();
}

Task<void> AppStore::receiveAnswer(ChatRun run) {
    auto opening = run.api.stream(run.question, run.archives, run.locale, run.earlier, run.stop);
    const std::unique_ptr<ByteStream> stream = co_await opening;
    LineReader reader;
    bool done = false;
    bool atEnd = false;
    while (!atEnd) {
        auto reading = stream->read();
        const QByteArray bytes = co_await reading;
        atEnd = bytes.isEmpty();
        const auto lines = atEnd ? reader.finish() : reader.add(bytes);
        for (const auto &line : lines) {
            if (!isCurrent(run))
                co_return;
            const auto event = Json::decode<ChatEvent>(line);
            takeEvent(event, run.index);
            done = done || event.type == QLatin1String("done");
        }
    }
    if (!done)
        throw URLError(URLError::Code::networkConnectionLost);
}

void AppStore::takeEvent(const ChatEvent &event, qsizetype index) {
    if (event.type == QLatin1String("delta")) {
        m_chat.messages[index].content += event.text.value_or(QString());
        m_growth.changed();
    } else if (event.type == QLatin1String("progress")) {
        const auto summary = event.summary.value_or(QString());
        if (summary.isEmpty())
            return;
        const auto prefix = event.archive
                                ? ArchiveStyle::domain(*event.archive) + QStringLiteral(" · ")
                                : QString();
        publish(m_chatProgress, prefix + summary, &AppStore::chatProgressChanged);
    } else if (event.type == QLatin1String("references")) {
        m_growth.flush();
        auto &answer = m_chat.messages[index];
        answer.references = event.items.value_or(QList<CaseCard>());
        answer.mode = event.mode;
        m_messages.setItem(index, answer, {MessageModel::references, MessageModel::mode});
    } else if (event.type == QLatin1String("error")) {
        ServiceError failure;
        failure.error = QStringLiteral("chat_error");
        failure.message = event.message;
        throw failure;
    }
}

void AppStore::stopChat() {
    publish(m_chatProgress, {}, &AppStore::chatProgressChanged);
    m_chatRun = Identifier::make();
    m_chatStop.request_stop();
    m_growth.flush();
    if (m_chatting)
        saveChat();
    publish(m_chatting, false, &AppStore::chattingChanged);
}

void AppStore::saveChat() {
    if (m_chat.messages.isEmpty())
        return;
    m_chat.updatedAt = Date::from(m_platform.clock.now());
    auto &conversations = m_library.conversations;
    conversations.removeIf([&](const Conversation &kept) { return kept.id == m_chat.id; });
    conversations.prepend(m_chat);
    if (m_account)
        LibrarySync::enqueueConversation(m_chat, m_chatBaseVersion, m_library);
    Q_EMIT libraryChanged();
    persist();
}

void AppStore::newChat() {
    stopChat();
    saveChat();
    openEmptyChat();
    publish(m_chatError, {}, &AppStore::chatErrorChanged);
    setDestination(QStringLiteral("chat"));
}

void AppStore::openChat(Conversation conversation) {
    stopChat();
    saveChat();
    // Of the open conversation the caller may hold a copy from before its last answer.
    if (conversation.id != m_chat.id || m_chat.messages.isEmpty())
        setChat(conversation);
    setSelectedArchives(conversation.archives.value_or(QStringList()));
    m_chatBaseVersion = LibrarySync::baseVersion(conversation.id, m_library);
    publish(m_chatError, {}, &AppStore::chatErrorChanged);
    setDestination(QStringLiteral("chat"));
}

void AppStore::renameConversation(Identifier id, const QString &title) {
    const auto typed = firstCharacters(title.trimmed(), longestTypedTitle);
    auto &conversations = m_library.conversations;
    const auto found =
        std::find_if(conversations.cbegin(), conversations.cend(),
                     [&](const Conversation &conversation) { return conversation.id == id; });
    if (typed.isEmpty() || found == conversations.cend())
        return;
    auto &conversation = conversations[found - conversations.cbegin()];
    conversation.title = typed;
    conversation.updatedAt = Date::from(m_platform.clock.now());
    if (m_chat.id == id) {
        m_chat.title = typed;
        Q_EMIT chatChanged();
    }
    if (m_account)
        LibrarySync::enqueueConversation(conversation, std::nullopt, m_library);
    Q_EMIT libraryChanged();
    persist();
}

void AppStore::deleteConversation(Conversation conversation) {
    if (m_chat.id == conversation.id) {
        stopChat();
        openEmptyChat();
        publish(m_chatError, {}, &AppStore::chatErrorChanged);
    }
    m_library.conversations.removeIf(
        [&](const Conversation &kept) { return kept.id == conversation.id; });
    if (m_account)
        LibrarySync::deleteConversation(conversation, m_library);
    Q_EMIT libraryChanged();
    persist();
}
