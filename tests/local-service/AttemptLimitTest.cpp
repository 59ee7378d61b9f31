#include "AttemptLimit.h"
#include "Passwords.h"

#include <gtest/gtest.h>

#include <sodium.h>

namespace {

using namespace std::chrono_literals;

TEST(AttemptLimit, CountsEachNameInItsOwnWindow) {
    const auto ada = QStringLiteral("ada");
    const auto bob = QStringLiteral("bob");
    constexpr qint64 begin = 1'000'000'000'000;
    constexpr qint64 window = AttemptLimit::window.count();
    AttemptLimit limit;
    for (int count = 0; count < AttemptLimit::greatestCount; ++count)
        EXPECT_FALSE(limit.admit(ada, begin + count));
    EXPECT_EQ(limit.admit(ada, begin + 1000), AttemptLimit::window - 1s);
    // Waiting is not made longer by trying.
    EXPECT_EQ(limit.admit(ada, begin + window - 1), 1ms);
    EXPECT_FALSE(limit.admit(bob, begin + 1000));
    EXPECT_FALSE(limit.admit(ada, begin + window));

    for (int count = 0; count < 20; ++count) {
        EXPECT_FALSE(limit.admit(bob, begin + window));
        limit.forget(bob);
    }

    // The clock was set back by a day.
    for (int count = 0; count < AttemptLimit::greatestCount; ++count)
        limit.admit(bob, begin);
    EXPECT_TRUE(limit.admit(bob, begin));
    EXPECT_FALSE(limit.admit(bob, begin - 86'400'000));
}

TEST(Passwords, OfNobodyCostAsMuchAsAnyOther) {
    // Also begins the library's use, which the comparison by itself does not.
    EXPECT_FALSE(Passwords::matches(Passwords::ofNobody(), QString()));
    EXPECT_EQ(crypto_pwhash_str_needs_rehash(Passwords::ofNobody().constData(),
                                             crypto_pwhash_OPSLIMIT_INTERACTIVE,
                                             crypto_pwhash_MEMLIMIT_INTERACTIVE),
              0);
    EXPECT_EQ(crypto_pwhash_str_needs_rehash(Passwords::hash(QString()).constData(),
                                             crypto_pwhash_OPSLIMIT_INTERACTIVE,
                                             crypto_pwhash_MEMLIMIT_INTERACTIVE),
              0);
}

} // namespace
