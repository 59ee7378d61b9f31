#pragma once

#include "store/AppStore.h"
#include "tests/store/StoreAccess.h"
#include "tests/support/Await.h"
#include "tests/support/FakeTransport.h"
#include "tests/support/TestPlatform.h"

#include <gtest/gtest.h>

/// A store on a whole system that the test drives. What a test leaves under way is ended before
/// the store goes.
class StoreTest : public testing::Test {
protected:
    void TearDown() override {
        StoreAccess::cancelSync(store);
        settleEventLoop();
        while (system.transport.abandon() || system.clock.sleepers() > 0) {
            system.clock.advance(std::chrono::hours(1));
            settleEventLoop();
        }
    }

    TestPlatform<FakeTransport> system;
    AppStore store{system.platform()};
};
