#include "platform/SecretServiceStore.h"
#include "platform/DesktopCredentialStore.h"
#include "platform/KeyringModule.h"
#include "platform/SystemFiles.h"
#include "tests/storage/PrivateKeyring.h"
#include "tests/storage/TemporaryHome.h"
#include "tests/support/Await.h"

#include <QElapsedTimer>
#include <QTimer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;
using Outcome = CredentialStore::Outcome;

namespace {

const auto service = u"chat.quillmere.test"_s;
const auto account = u"http://127.0.0.1:4310"_s;

class SecretService : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(keyring.startBus());
        ASSERT_TRUE(keyring.startKeyring());
    }

    std::unique_ptr<SecretServiceStore> prepared(SecretServiceStore::Limits limits = {}) {
        auto store = std::make_unique<SecretServiceStore>(u"Quillmere"_s, limits);
        await(store->prepare());
        return store;
    }

    PrivateKeyring keyring;
};

} // namespace

TEST_F(SecretService, itemsAreKeptForWhoeverComesLater) {
    auto store = prepared();
    ASSERT_TRUE(store->isAvailable());
    EXPECT_EQ(store->find(service, account), std::nullopt);
    EXPECT_EQ(store->remove(service, account), Outcome::notFound);

    for (const auto &secret : {"first"_qba, ""_qba, QByteArray("\xff\0\xfe end", 7)}) {
        EXPECT_EQ(store->add(service, account, secret), Outcome::done);
        const auto later = prepared();
        EXPECT_EQ(later->find(service, account), secret);
        EXPECT_EQ(later->find(service, account + u'/'), std::nullopt);
        EXPECT_EQ(later->find(service + u'x', account), std::nullopt);
        EXPECT_EQ(store->find(service, account), secret);
    }

    EXPECT_EQ(store->add(service, account + u'/', "other"), Outcome::done);
    store = prepared();
    // One item, however often it was added.
    EXPECT_EQ(store->remove(service, account), Outcome::done);
    EXPECT_EQ(store->remove(service, account), Outcome::notFound);
    EXPECT_EQ(store->find(service, account), std::nullopt);
    EXPECT_EQ(store->find(service, account + u'/'), "other");
}

TEST_F(SecretService, aLockedKeyringNeitherAsksNorCountsAsEmpty) {
    const auto store = prepared();
    ASSERT_EQ(store->add(service, account, "secret"), Outcome::done);
    keyring.lockKeyring();
    EXPECT_EQ(store->find(service, account), "secret");

    // Nobody can answer here, so that asking fails.
    const auto later = prepared();
    EXPECT_TRUE(later->isAvailable());
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(later->find(service, account), std::nullopt);
    EXPECT_EQ(later->remove(service, account), Outcome::failed);
    EXPECT_EQ(later->add(service, account, "other"), Outcome::failed);
    EXPECT_LT(time.elapsed(), 4000);
}

TEST_F(SecretService, aKeyringThatHangsIsGivenUpAndWorksAgainLater) {
    const auto store = prepared({20s, 2s});
    const auto known = account + u'/';
    ASSERT_EQ(store->add(service, known, "known"), Outcome::done);
    keyring.setFrozen(true);
    QElapsedTimer time;
    time.start();
    EXPECT_EQ(store->remove(service, known), Outcome::failed);
    // The window waits for one call alone, however many follow.
    for (int count = 0; count < 20; ++count) {
        EXPECT_EQ(store->find(service, account), std::nullopt);
        EXPECT_EQ(store->add(service, account, "secret"), Outcome::failed);
    }
    EXPECT_LT(time.elapsed(), 20'000);
    EXPECT_EQ(store->find(service, known), "known");

    // The window stays alive while it is waited for.
    int turns = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, [&] { ++turns; });
    timer.start(5ms);
    SystemFiles files;
    const TemporaryHome home;
    DesktopCredentialStore desktop(files, home.path(u"state"_s), [] {
        return std::make_unique<SecretServiceStore>(
            u"Quillmere"_s, SecretServiceStore::Limits{.opening = 400ms, .call = 200ms});
    });
    EXPECT_EQ(desktop.add(service, account, "secret"), Outcome::failed);
    await(desktop.prepare());
    EXPECT_TRUE(desktop.isFile());
    EXPECT_GT(turns, 10);

    keyring.setFrozen(false);
    ASSERT_TRUE(eventually([&] {
        await(store->prepare());
        return store->remove(service, account) != Outcome::failed &&
               store->add(service, account, "secret") == Outcome::done;
    }));
    EXPECT_EQ(prepared()->find(service, account), "secret");
    await(desktop.prepare());
    EXPECT_TRUE(desktop.isFile());
}

TEST_F(SecretService, isTheDesktopsFirstChoice) {
    SystemFiles files;
    const TemporaryHome home;
    DesktopCredentialStore desktop(files, home.path(u"state"_s),
                                   [] { return KeyringModule::open(u"Quillmere"_s); });
    await(desktop.prepare());
    EXPECT_FALSE(desktop.isFile());
    EXPECT_EQ(desktop.add(service, account, "secret"), Outcome::done);
    EXPECT_EQ(prepared()->find(service, account), "secret");
    EXPECT_FALSE(files.exists(home.path(u"state"_s)));
}

TEST(DesktopCredentialStore, usesTheFileWhereThereIsNoKeyring) {
    PrivateKeyring keyring;
    for (const bool bus : {false, true}) {
        if (bus) {
            ASSERT_TRUE(keyring.startBus());
        }
        SystemFiles files;
        const TemporaryHome home;
        const auto directory = home.path(u"state/Quillmere.Local"_s);
        bool opened = false;
        DesktopCredentialStore desktop(files, directory, [&opened] {
            opened = true;
            return KeyringModule::open(u"Quillmere"_s);
        });
        EXPECT_EQ(desktop.find(service, account), std::nullopt);
        EXPECT_EQ(desktop.remove(service, account), Outcome::failed);
        await(desktop.prepare());
        EXPECT_TRUE(desktop.isFile());
        EXPECT_EQ(opened, bus);
        EXPECT_EQ(desktop.add(service, account, "secret"), Outcome::done);
        EXPECT_EQ(desktop.find(service, account), "secret");
        EXPECT_EQ(modeOf(directory), 0700);
        EXPECT_EQ(modeOf(directory + u"/credentials.json"_s), 0600);
    }
}
