// The account's wall: it lives on the service, and its last good list in a copy on this machine.
#include "platform/Clock.h"
#include "platform/Start.h"
#include "platform/URLError.h"
#include "records/ArchiveStyle.h"
#include "records/WallReplies.h"
#include "service/Endpoints.h"
#include "service/ServiceError.h"
#include "storage/ReadingCache.h"
#include "store/AppStore.h"

#include <QJsonDocument>

#include <algorithm>

namespace {

/// The service lists a new item a moment after it has taken it.
constexpr std::chrono::milliseconds settling(900);

const QString copyKey = QStringLiteral("wall");
const QString pendingPrefix = QStringLiteral("pending:");

WallItem pendingItem(const CaseCard &card, qint64 now) {
    WallItem item;
    item.id = pendingPrefix + card.key;
    item.kind = QStringLiteral("save");
    item.site = ArchiveStyle::domain(card.archive);
    item.caseId = card.id;
    item.title = card.title;
    item.createdAt = now;
    return item;
}

bool holds(const WallItem &item, const CaseCard &card) {
    return item.caseId == card.id && item.archiveID() == card.archive;
}

/// The chat of the first item with the id; absent also when that item holds none.
std::optional<SavedChat> pinnedChat(const QList<WallItem> &wall, const QString &id) {
    const auto item = std::find_if(wall.begin(), wall.end(),
                                   [&](const WallItem &candidate) { return candidate.id == id; });
    return item == wall.end() ? std::nullopt : item->chat();
}

ServiceError savedChatMissing(const QString &message) {
    ServiceError error;
    error.error = QStringLiteral("saved_chat_missing");
    error.message = message;
    return error;
}

QJsonObject object(const SavedChat &chat) {
    return QJsonDocument::fromJson(Json::encode(chat)).object();
}

} // namespace

Task<void> AppStore::refreshWall() {
    if (!m_account) {
        publish(m_wall, {}, &AppStore::wallChanged);
        co_return;
    }
    const QString key = libraryKey();
    const API service = api();
    publish(m_wallLoading, true, &AppStore::wallLoadingChanged);
    publish(m_wallError, {}, &AppStore::wallErrorChanged);
    try {
        auto loading = service.get<Items<WallItem>>(Endpoint::wall, {}, {});
        const Items<WallItem> reply = co_await loading;
        if (libraryKey() == key) {
            publish(m_wall, reply.items, &AppStore::wallChanged);
            publish(m_wallOffline, false, &AppStore::wallOfflineChanged);
            ReadingCache::put(m_platform.files, m_wall, key, copyKey);
        }
    } catch (const URLError &) {
        if (libraryKey() == key)
            showWallCopy();
    } catch (...) {
        if (libraryKey() == key)
            publish(m_wallError, text(QStringLiteral("loadFailed")), &AppStore::wallErrorChanged);
    }
    if (libraryKey() == key)
        publish(m_wallLoading, false, &AppStore::wallLoadingChanged);
}

void AppStore::beginRefreshWall() {
    start(*this, [this] { return refreshWall(); });
}

void AppStore::showWallCopy() {
    const auto copy = ReadingCache::get<QList<WallItem>>(m_platform.files, libraryKey(), copyKey);
    if (!copy) {
        publish(m_wallError, text(QStringLiteral("loadFailed")), &AppStore::wallErrorChanged);
        return;
    }
    publish(m_wall, *copy, &AppStore::wallChanged);
    publish(m_wallOffline, true, &AppStore::wallOfflineChanged);
}

bool AppStore::isOnWall(const CaseCard &card) const {
    return std::any_of(m_wall.begin(), m_wall.end(),
                       [&](const WallItem &item) { return holds(item, card); });
}

void AppStore::markWallMutation(const QString &key, bool changing) {
    if (changing)
        m_wallMutations.insert(key);
    else
        m_wallMutations.remove(key);
    Q_EMIT wallMutationsChanged();
}

void AppStore::showToggled(const CaseCard &card, bool on) {
    auto wall = m_wall;
    if (!on)
        wall.removeIf([&](const WallItem &item) { return holds(item, card); });
    else if (!isOnWall(card))
        wall.prepend(pendingItem(card, m_platform.clock.now().toMSecsSinceEpoch()));
    publish(m_wall, wall, &AppStore::wallChanged);
}

Task<void> AppStore::toggleWallCase(CaseCard card) {
    if (!m_account) {
        setNotice(text(QStringLiteral("saveNeedsAccount")));
        co_return;
    }
    if (m_wallMutations.contains(card.key))
        co_return;
    markWallMutation(card.key, true);
    const QString key = libraryKey();
    const API service = api();
    const QJsonObject body{{QStringLiteral("archive"), card.archive},
                           {QStringLiteral("id"), card.id}};
    try {
        auto toggling = service.post<WallCaseReply>(Endpoint::wallCase, body, {});
        const WallCaseReply reply = co_await toggling;
        if (libraryKey() != key)
            co_return;
        showToggled(card, reply.on);
        auto pause = m_platform.clock.sleep(settling, {});
        co_await pause;
        if (libraryKey() != key)
            co_return;
        auto refreshing = refreshWall();
        co_await refreshing;
    } catch (...) {
        if (libraryKey() == key)
            setNotice(describe(std::current_exception()));
    }
    if (libraryKey() == key)
        markWallMutation(card.key, false);
}

void AppStore::beginToggleWallCase(const CaseCard &card) {
    start(*this, [this, card] { return toggleWallCase(card); });
}

Task<void> AppStore::removeWallItem(WallItem item) {
    if (m_wallMutations.contains(item.id) || item.id.startsWith(pendingPrefix))
        co_return;
    markWallMutation(item.id, true);
    const QString key = libraryKey();
    const API service = api();
    const QJsonObject body{{QStringLiteral("remove"), item.id}};
    try {
        auto removing = service.post<WallRemovalReply>(Endpoint::wall, body, {});
        co_await removing;
        if (libraryKey() != key)
            co_return;
        auto wall = m_wall;
        wall.removeIf([&](const WallItem &other) { return other.id == item.id; });
        publish(m_wall, wall, &AppStore::wallChanged);
        ReadingCache::put(m_platform.files, m_wall, key, copyKey);
    } catch (...) {
        if (libraryKey() == key)
            setNotice(describe(std::current_exception()));
    }
    if (libraryKey() == key)
        markWallMutation(item.id, false);
}

Task<void> AppStore::pinChat() {
    if (!m_account || m_chat.messages.isEmpty() || m_chatting || m_pinning)
        co_return;
    publish(m_pinning, true, &AppStore::pinningChanged);
    const QString key = libraryKey();
    try {
        auto pinning = pinChat(api(), key, m_chat.id);
        co_await pinning;
    } catch (...) {
        if (libraryKey() == key)
            setNotice(describe(std::current_exception()));
    }
    if (libraryKey() == key)
        publish(m_pinning, false, &AppStore::pinningChanged);
}

Task<void> AppStore::pinChat(API service, QString key, Identifier conversation) {
    std::optional<SavedChat> prior;
    if (m_chat.wallID) {
        const QString wallID = *m_chat.wallID;
        auto loading = service.get<Items<WallItem>>(Endpoint::wall, {}, {});
        const Items<WallItem> reply = co_await loading;
        if (libraryKey() != key || m_chat.id != conversation)
            co_return;
        prior = pinnedChat(reply.items, wallID);
        if (!prior)
            throw savedChatMissing(text(QStringLiteral("savedChatMissing")));
    }

    const auto archives = selectedArchives();
    QJsonObject body{
        {QStringLiteral("title"), m_chat.title},
        {QStringLiteral("thread"), object(SavedChat::snapshot(m_chat, archives, prior))}};
    if (m_chat.wallID)
        body.insert(QStringLiteral("id"), *m_chat.wallID);
    if (archives.size() == 1)
        body.insert(QStringLiteral("site"), ArchiveStyle::domain(archives.first()));
    auto pinning = service.post<WallChatReply>(Endpoint::wallChat, body, {});
    const WallChatReply reply = co_await pinning;
    if (libraryKey() != key || m_chat.id != conversation)
        co_return;
    m_chat.wallID = reply.item.id;
    Q_EMIT chatChanged();
    saveChat();
    setNotice(text(QStringLiteral("chatSaved")));
    auto refreshing = refreshWall();
    co_await refreshing;
}

void AppStore::beginPinChat() {
    start(*this, [this] { return pinChat(); });
}

void AppStore::resumeWallChat(const SavedChat &saved) {
    newChat();
    setSelectedArchives(saved.lit);
    auto chat = saved.conversation();
    chat.updatedAt = Date::from(m_platform.clock.now());
    setChat(chat);
    setDestination(QStringLiteral("chat"));
}
