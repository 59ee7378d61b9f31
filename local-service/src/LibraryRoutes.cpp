#include "LibraryRoutes.h"

#include "AccountStore.h"
#include "LibraryStore.h"
#include "Router.h"

#include "records/Library.h"

namespace {

constexpr qsizetype longestKey = 300;
/// In bytes of JSON. A conversation that is taken must also fit into the request of its next edit.
constexpr qsizetype greatestCard = 64 * 1024;
constexpr qsizetype greatestConversation = 900'000;

/// What is wrong with a change, as the end of a sentence; empty for a sound one.
QString fault(const LibraryChange &change) {
    const bool isConversation = change.kind == QLatin1String("conversation");
    if (!isConversation && change.kind != QLatin1String("saved"))
        return QStringLiteral("has a kind other than saved and conversation");
    if (change.key.isEmpty() || change.key.size() > longestKey)
        return QStringLiteral("has no key of 1 to %1 characters").arg(longestKey);
    if (change.baseVersion < 0)
        return QStringLiteral("has a negative baseVersion");
    if (change.deleted)
        return {};
    if (isConversation) {
        if (!change.conversation || change.conversation->id.text != change.key)
            return QStringLiteral("holds no conversation of its key");
        if (Json::encode(*change.conversation).size() > greatestConversation)
            return QStringLiteral("holds more than %1 bytes").arg(greatestConversation);
    } else {
        if (!change.card || change.card->key != change.key)
            return QStringLiteral("holds no card of its key");
        if (Json::encode(*change.card).size() > greatestCard)
            return QStringLiteral("holds more than %1 bytes").arg(greatestCard);
    }
    return {};
}

void check(const QList<LibraryChange> &changes) {
    for (const LibraryChange &change : changes) {
        if (const auto what = fault(change); !what.isEmpty())
            throw RequestError(
                400, QStringLiteral("bad_change"),
                QStringLiteral("The change %1 of the library %2.").arg(change.opId.text, what));
    }
}

} // namespace

void LibraryRoutes::add(Router &router, Database &database) {
    const AccountStore accounts(database);
    router.add("POST", QStringLiteral("/v1/library"), [accounts, &database](Call &call) {
        const auto session = accounts.requireSession(call);
        const auto upload = call.body<LibraryUpload>(greatestUpload);
        check(upload.changes);
        call.reply(LibraryStore::exchange(database, session, upload.changes));
    });
}
