#include "storage/TokenVault.h"

#include "service/ServiceError.h"
#include "tests/support/MemoryCredentials.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

const QString server = u"http://127.0.0.1:4310"_s;

std::optional<QString> messageOf(CredentialStore &store, const std::optional<QString> &token) {
    try {
        TokenVault::set(store, token, server);
        return std::nullopt;
    } catch (const ServiceError &error) {
        EXPECT_EQ(error.error, u"keychain"_s);
        EXPECT_FALSE(error.status);
        return error.errorDescription();
    }
}

} // namespace

TEST(TokenVault, oneTokenForEachAddressAsWritten) {
    MemoryCredentials store;
    EXPECT_FALSE(TokenVault::read(store, server));
    TokenVault::set(store, std::nullopt, server);

    for (const auto &token : {u"first"_s, u"\uFEFFé漢\U0001F511"_s, u""_s}) {
        TokenVault::set(store, token, server);
        EXPECT_EQ(TokenVault::read(store, server), token);
        EXPECT_EQ(store.secrets().size(), 1);
    }
    EXPECT_EQ(store.secrets().begin().key(), std::pair(u"chat.quillmere.mac.local"_s, server));
    EXPECT_FALSE(TokenVault::read(store, server + u'/'));

    TokenVault::set(store, u"other"_s, server + u'/');
    TokenVault::set(store, std::nullopt, server);
    EXPECT_FALSE(TokenVault::read(store, server));
    EXPECT_EQ(TokenVault::read(store, server + u'/'), u"other"_s);
}

TEST(TokenVault, bytesThatAreNoTextAreNoToken) {
    MemoryCredentials store;
    for (const auto &bytes : {"\xff"_qba, "\xc3"_qba, "ok\xed\xa0\x80"_qba}) {
        store.secrets()[{TokenVault::service(), server}] = bytes;
        EXPECT_FALSE(TokenVault::read(store, server));
    }
}

TEST(TokenVault, aReplacementIsARemovalAndAnAddition) {
    MemoryCredentials store;
    TokenVault::set(store, u"old"_s, server);
    EXPECT_EQ(store.calls(), (QStringList{u"remove"_s, u"add"_s}));

    store.failAdditions();
    EXPECT_EQ(messageOf(store, u"new"_s), u"Could not save the login securely."_s);
    EXPECT_FALSE(TokenVault::read(store, server));

    MemoryCredentials locked;
    TokenVault::set(locked, u"old"_s, server);
    locked.failRemovals();
    EXPECT_EQ(messageOf(locked, u"new"_s), u"Could not update the saved login."_s);
    EXPECT_EQ(messageOf(locked, std::nullopt), u"Could not update the saved login."_s);
    EXPECT_EQ(TokenVault::read(locked, server), u"old"_s);
    EXPECT_EQ(locked.calls().count(u"add"_s), 1);
}
