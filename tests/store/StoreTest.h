#pragma once

#include "store/AppStore.h"
#include "tests/store/StoreAccess.h"
#include "tests/support/Await.h"
#include "tests/support/FakeTransport.h"
#include "tests/support/TestPlatform.h"

#include <QThreadPool>

#include <gtest/gtest.h>

/// Ends what is under way, before the store goes.
inline void endAll(AppStore &store, TestPlatform<FakeTransport> &system) {
    StoreAccess::cancelSync(store);
    bool busy = true;
    while (busy) {
        QThreadPool::globalInstance()->waitForDone();
        settleEventLoop();
        busy = system.transport.abandon() || system.clock.sleepers() > 0;
        system.clock.advance(std::chrono::hours(1));
    }
}

/// A store on a whole system that the test drives.
class StoreTest : public testing::Test {
protected:
    void TearDown() override { endAll(store, system); }

    TestPlatform<FakeTransport> system;
    AppStore store{system.platform()};
};
