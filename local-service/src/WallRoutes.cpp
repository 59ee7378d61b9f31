#include "WallRoutes.h"

#include "AccountStore.h"
#include "CaseStore.h"
#include "Router.h"
#include "WallStore.h"

#include "records/ArchiveStyle.h"
#include "records/Identifier.h"
#include "records/JsonDecoder.h"
#include "records/WallReplies.h"

namespace {

struct CaseToggle {
    QString archive;
    QString id;
};

struct Removal {
    QString remove;
};

struct ChatPin {
    QString title;
    SavedChat thread;
    std::optional<QString> id;
    std::optional<QString> site;
};

} // namespace

template <>
struct JsonFields<CaseToggle> {
    static constexpr auto table = std::make_tuple(jsonField("archive", &CaseToggle::archive),
                                                  jsonField("id", &CaseToggle::id));
};

template <>
struct JsonFields<Removal> {
    static constexpr auto table = std::make_tuple(jsonField("remove", &Removal::remove));
};

template <>
struct JsonFields<ChatPin> {
    static constexpr auto table =
        std::make_tuple(jsonField("title", &ChatPin::title), jsonField("thread", &ChatPin::thread),
                        jsonField("id", &ChatPin::id), jsonField("site", &ChatPin::site));
};

namespace {

constexpr qsizetype longestTitle = 10'000;
constexpr qsizetype longestSite = 300;
/// In bytes of JSON.
constexpr qsizetype greatestThread = 500'000;
constexpr std::size_t greatestPin = 1'000'000;

void checkLength(const char *name, qsizetype length, qsizetype longest, const char *unit) {
    if (length > longest)
        throw RequestError(413, QStringLiteral("too_large"),
                           QStringLiteral("\"%1\" is longer than %2 %3.")
                               .arg(QLatin1String(name))
                               .arg(longest)
                               .arg(QLatin1String(unit)));
}

/// The catalogue may change later; the wall keeps showing the case as it was.
WallItem caseItem(const CaseEntry &entry, const QString &origin, qint64 now) {
    WallItem item;
    item.id = Identifier::make().text;
    item.kind = QStringLiteral("save");
    item.site = ArchiveStyle::domain(entry.archive);
    item.caseId = entry.id;
    item.title = entry.title;
    item.body = entry.summary;
    item.url = QStringLiteral("%1/cases/%2/%3").arg(origin, entry.archive, entry.id);
    item.card = WallCard{entry.era, entry.title, entry.summary, std::nullopt};
    item.createdAt = now;
    return item;
}

bool toggleCase(const WallStore &wall, CaseStore &cases, qint64 account, const CaseToggle &request,
                const QString &origin, qint64 now) {
    // First the removal: it must also work for a case that has left the catalogue.
    if (wall.removeCase(account, request.archive, request.id))
        return false;
    const auto entry = cases.find(request.archive, request.id);
    if (!entry)
        throw RequestError::noSuchCase();
    wall.add(account, caseItem(*entry, origin, now));
    return true;
}

WallItem pinChat(const WallStore &wall, qint64 account, const ChatPin &request, qint64 now) {
    WallItem item;
    item.kind = QStringLiteral("chat");
    item.site = request.site;
    item.title = request.title;
    item.body = QString::fromUtf8(Json::encode(request.thread));
    item.createdAt = now;
    checkLength("title", request.title.size(), longestTitle, "characters");
    checkLength("site", request.site.value_or(QString()).size(), longestSite, "characters");
    checkLength("thread", item.body->toUtf8().size(), greatestThread, "bytes");

    if (!request.id) {
        item.id = Identifier::make().text;
        wall.add(account, item);
        return item;
    }
    item.id = *request.id;
    const auto replaced = wall.replaceChat(account, item);
    if (!replaced)
        throw RequestError(404, QStringLiteral("saved_chat_missing"),
                           QStringLiteral("This conversation is no longer on the wall."));
    return *replaced;
}

} // namespace

void WallRoutes::add(Router &router, Database &database, CaseStore &cases, const QString &origin,
                     const Clock &clock) {
    const AccountStore accounts(database);
    const WallStore wall(database);
    router.add("GET", QStringLiteral("/v1/wall"), [accounts, wall](Call &call) {
        call.reply(Items<WallItem>{wall.items(accounts.requireSession(call).number)});
    });
    router.add("POST", QStringLiteral("/v1/wall"), [accounts, wall](Call &call) {
        const auto account = accounts.requireSession(call).number;
        wall.remove(account, call.body<Removal>().remove);
        call.reply(WallRemovalReply{true});
    });
    router.add("POST", QStringLiteral("/v1/wall/case"),
               [accounts, wall, &cases, origin, clock](Call &call) {
                   const auto account = accounts.requireSession(call).number;
                   const auto request = call.body<CaseToggle>();
                   call.reply(
                       WallCaseReply{toggleCase(wall, cases, account, request, origin, clock())});
               });
    router.add("POST", QStringLiteral("/v1/wall/chat"), [accounts, wall, clock](Call &call) {
        const auto account = accounts.requireSession(call).number;
        const auto request = call.body<ChatPin>(greatestPin);
        call.reply(WallChatReply{true, pinChat(wall, account, request, clock())});
    });
}
