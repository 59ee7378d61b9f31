#pragma once

#include "store/AppStore.h"
#include "tests/store/StoreAccess.h"
#include "tests/support/Await.h"
#include "tests/support/FakeTransport.h"
#include "tests/support/Settle.h"
#include "tests/support/TestPlatform.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>

/// A store on a whole system that the test drives.
class StoreTest : public testing::Test {
protected:
    StoreTest() = default;
    ~StoreTest() override {
        if (m_store)
            endAll();
        m_store.reset();
        // What waited for the store ends in a turn of its own.
        settleEventLoop();
    }
    Q_DISABLE_COPY_MOVE(StoreTest)

    /// Ends the store before the test does. Nothing but an answer may be under way.
    void dropStore() {
        StoreAccess::cancelSync(store);
        settleEventLoop();
        m_store.reset();
    }

    QString text(const char *key) const { return store.text(QLatin1String(key)); }

    qsizetype requests() const { return std::ssize(system.transport.requests()); }
    /// The JSON of the last request that had any.
    QJsonObject lastBody() const {
        const auto &requests = system.transport.requests();
        const auto last =
            std::find_if(requests.rbegin(), requests.rend(),
                         [](const HttpRequest &request) { return bool(request.body); });
        return QJsonDocument::fromJson(*last->body).object();
    }

    TestPlatform<FakeTransport> system;

private:
    void endAll() {
        StoreAccess::cancelSync(store);
        settleAll();
        while (system.transport.abandon() || system.clock.sleepers() > 0) {
            system.clock.advance(std::chrono::hours(1));
            settleAll();
        }
    }

    std::unique_ptr<AppStore> m_store = std::make_unique<AppStore>(system.platform());

protected:
    AppStore &store = *m_store;
};
