#pragma once

#include "platform/QtTransport.h"
#include "platform/SystemClock.h"
#include "store/AppStore.h"
#include "tests/store/StoreAccess.h"
#include "tests/support/TestPlatform.h"

/// The store of a signed-in user, over true connections and in true time. Where its files are is up
/// to the benchmark.
template <class FilesKind>
class SignedInStore final {
public:
    explicit SignedInStore(const QString &server) : m_store(platformOn(server)) {
        StoreAccess::setAccount(m_store, QStringLiteral("user"));
        m_store.loadLibrary();
    }

    AppStore &operator*() { return m_store; }
    AppStore *operator->() { return &m_store; }
    const AppStore *operator->() const { return &m_store; }
    FilesKind &files() { return m_system.files; }

private:
    /// A store takes up its server when it is made.
    Platform platformOn(const QString &server) {
        m_system.preferences.setValue(QStringLiteral("server"), server);
        return m_system.platform();
    }

    TestPlatform<QtTransport, FilesKind, SystemClock> m_system;
    AppStore m_store;
};
