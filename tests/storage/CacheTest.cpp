#include "platform/SystemFiles.h"
#include "records/Json.h"
#include "storage/LibraryDisk.h"
#include "storage/ProfileCache.h"
#include "storage/ReadingCache.h"
#include "tests/storage/TemporaryHome.h"
#include "tests/support/MemoryFiles.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString scope = LibraryDisk::key(u"server"_s, u"user"_s);
const QString otherScope = LibraryDisk::key(u"server"_s, std::nullopt);

Account account(const QString &handle) {
    return {.user = {.id = u"1"_s, .handle = handle, .email = u"a@example.org"_s, .verified = true},
            .plan = u"pro"_s,
            .subscription = {},
            .planExpiresAt = qint64(1) << 53,
            .apple = false};
}

QList<WallItem> wall() {
    WallItem chat;
    chat.id = u"w1"_s;
    chat.kind = u"chat"_s;
    chat.body = u"{\"items\":[]}"_s;
    chat.createdAt = 1'700'000'000'123;
    WallItem saved;
    saved.id = u"pending:2"_s;
    saved.kind = u"save"_s;
    saved.card = WallCard{.meta = u"1900s"_s, .title = {}, .problem = u"漢"_s, .highlight = {}};
    return {chat, saved};
}

} // namespace

TEST(ReadingCache, eachScopeAndKeyHasItsOwnPrivateCopy) {
    const TemporaryHome home;
    SystemFiles files;
    CaseEntry entry;
    entry.id = u"../../x"_s;
    entry.title = u"A bridge"_s;
    entry.sections = {{u"One"_s, u"Text"_s}};
    entry.hero = CaseEntry::Hero{.url = u"https://example.org/a.png"_s, .kind = {}, .label = {}};
    entry.year = 1907;

    EXPECT_FALSE(ReadingCache::get<CaseEntry>(files, scope, u"foible:../x|en"_s));
    ReadingCache::put(files, entry, scope, u"foible:../x|en"_s);
    EXPECT_EQ(Json::encode(ReadingCache::get<CaseEntry>(files, scope, u"foible:../x|en"_s).value()),
              Json::encode(entry));
    EXPECT_FALSE(ReadingCache::get<CaseEntry>(files, scope, u"foible:../x|fr"_s));
    EXPECT_FALSE(ReadingCache::get<CaseEntry>(files, otherScope, u"foible:../x|en"_s));

    const auto directory = home.path(u"data/Quillmere.Local/cache-"_s) + scope;
    const auto names = QDir(directory).entryList(QDir::Files | QDir::Hidden);
    // From `printf 'foible:../x|en' | sha256sum`.
    EXPECT_EQ(
        names,
        QStringList{u"2a8f45cdd055e85aced5b4ad02e275990e0747e89b0a9d33644c5d7f5eece00e.json"_s});
    EXPECT_EQ(modeOf(directory), 0700);
    EXPECT_EQ(modeOf(directory + u'/' + names.first()), 0600);
}

TEST(ReadingCache, theWallIsKeptAsAList) {
    MemoryFiles files;
    ReadingCache::put(files, wall(), scope, u"wall"_s);
    EXPECT_EQ(ReadingCache::get<QList<WallItem>>(files, scope, u"wall"_s), wall());
    auto &text = files.contents()[files.written().first()];
    EXPECT_TRUE(text.startsWith("[{\"id\":\"w1\"") && text.endsWith("}]"));

    ReadingCache::put(files, QList<WallItem>(), scope, u"wall"_s);
    EXPECT_EQ(text, "[]");
    EXPECT_EQ(ReadingCache::get<QList<WallItem>>(files, scope, u"wall"_s), QList<WallItem>());
    for (const auto *broken : {"", "[", "{}", "{\"items\":[]}", "[{}]", "[]]", "null"}) {
        text = broken;
        EXPECT_FALSE(ReadingCache::get<QList<WallItem>>(files, scope, u"wall"_s)) << broken;
    }
}

TEST(ReadingCache, everyFailureIsSilentAndAnUnreadableCopyIsReplaced) {
    MemoryFiles files;
    ReadingCache::put(files, wall(), scope, u"key"_s);
    EXPECT_FALSE(ReadingCache::get<Account>(files, scope, u"key"_s));
    ReadingCache::put(files, account(u"a"_s), scope, u"key"_s);
    EXPECT_EQ(ReadingCache::get<Account>(files, scope, u"key"_s), account(u"a"_s));

    files.failWrites(FileError::Code::noSpace);
    ReadingCache::put(files, account(u"b"_s), scope, u"key"_s);
    EXPECT_EQ(ReadingCache::get<Account>(files, scope, u"key"_s), account(u"a"_s));
    files.failWrites(std::nullopt);
    files.failPrivacy(FileError::Code::notPermitted);
    ReadingCache::put(files, account(u"b"_s), scope, u"key"_s);
    EXPECT_EQ(ReadingCache::get<Account>(files, scope, u"key"_s), account(u"b"_s));
    files.failReads(FileError::Code::deviceFailed);
    EXPECT_FALSE(ReadingCache::get<Account>(files, scope, u"key"_s));

    const TemporaryHome home;
    ASSERT_TRUE(put(home.path(u"data"_s), "a file where the directory should be"));
    SystemFiles blocked;
    ReadingCache::put(blocked, account(u"c"_s), scope, u"key"_s);
    EXPECT_FALSE(ReadingCache::get<Account>(blocked, scope, u"key"_s));
}

TEST(ProfileCache, aProfileBelongsToTheExactLogin) {
    const TemporaryHome home;
    SystemFiles files;
    const auto token = u"secret-token-é"_s;
    // From `printf 'server|session:%s' $(printf 'secret-token-é' | sha256sum) | sha256sum`.
    EXPECT_EQ(ProfileCache::scope(u"server"_s, token),
              u"2bf0e1b9cfb1d8acef2c97157773f57a1bd3dc9d75d5c386af25633975567cd6"_s);

    ProfileCache::put(files, account(u"a"_s), u"server"_s, token);
    EXPECT_EQ(ProfileCache::get(files, u"server"_s, token), account(u"a"_s));
    EXPECT_FALSE(ProfileCache::get(files, u"server/"_s, token));
    EXPECT_FALSE(ProfileCache::get(files, u"server"_s, u"another"_s));

    QDirIterator entries(home.path(u"data"_s), QDir::AllEntries | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    int count = 0;
    while (entries.hasNext()) {
        const auto path = entries.next();
        EXPECT_FALSE(path.contains(u"secret"_s));
        EXPECT_FALSE(contentOf(path).contains("secret"));
        ++count;
    }
    EXPECT_GE(count, 3);
}
