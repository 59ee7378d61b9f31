#include "platform/FileCredentialStore.h"

#include "tests/support/MemoryFiles.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using Outcome = CredentialStore::Outcome;

namespace {

const auto service = u"service"_s;
const auto account = u"http://127.0.0.1:4310"_s;
const auto path = u"/state/credentials.json"_s;

} // namespace

TEST(FileCredentialStore, itemsAreKeptForWhoeverComesLater) {
    MemoryFiles files;
    FileCredentialStore store(files, u"/state"_s);
    EXPECT_EQ(store.find(service, account), std::nullopt);
    EXPECT_EQ(store.remove(service, account), Outcome::notFound);
    EXPECT_TRUE(files.written().isEmpty());

    for (const auto &secret : {"first"_qba, ""_qba, QByteArray("\xff\0\xfe end", 7)}) {
        EXPECT_EQ(store.add(service, account, secret), Outcome::done);
        EXPECT_EQ(FileCredentialStore(files, u"/state"_s).find(service, account), secret);
    }
    EXPECT_EQ(store.add(service, account + u'/', "other"), Outcome::done);
    EXPECT_EQ(store.find(service + u'x', account), std::nullopt);
    EXPECT_EQ(store.remove(service, account), Outcome::done);
    EXPECT_EQ(store.remove(service, account), Outcome::notFound);
    EXPECT_EQ(store.find(service, account + u'/'), "other");
}

TEST(FileCredentialStore, anUnreadableFileIsNeverOverwritten) {
    MemoryFiles files;
    FileCredentialStore store(files, u"/state"_s);
    for (const auto *broken :
         {"", "{", "[]", "{}", R"({"items":{}})", R"({"items":[1]})",
          R"({"items":[{"service":"service","account":"http://127.0.0.1:4310"}]})",
          R"({"items":[{"service":"s","account":"a","secret":"?"}]})"}) {
        files.contents()[path] = broken;
        EXPECT_EQ(store.find(service, account), std::nullopt);
        EXPECT_EQ(store.remove(service, account), Outcome::failed) << broken;
        EXPECT_EQ(store.add(service, account, "secret"), Outcome::failed) << broken;
        EXPECT_EQ(files.contents()[path], broken);
    }

    files.contents().clear();
    ASSERT_EQ(store.add(service, account, "secret"), Outcome::done);
    const auto content = files.contents()[path];
    files.failReads(FileError::Code::deviceFailed);
    EXPECT_EQ(store.find(service, account), std::nullopt);
    EXPECT_EQ(store.add(service, account, "other"), Outcome::failed);
    files.failReads(std::nullopt);
    files.failWrites(FileError::Code::noSpace);
    EXPECT_EQ(store.remove(service, account), Outcome::failed);
    EXPECT_EQ(files.contents()[path], content);
}
