#pragma once

#include "platform/QtTransport.h"
#include "platform/SystemClock.h"
#include "store/AppStore.h"
#include "tests/store/StoreAccess.h"
#include "tests/support/FixedAppearance.h"
#include "tests/support/FixedRandom.h"
#include "tests/support/MemoryCredentials.h"
#include "tests/support/MemoryPreferences.h"
#include "tests/support/RecordingBrowser.h"
#include "tests/support/RecordingBrowserSession.h"

/// The store of a signed-in user, over true connections and in true time. Where its files are is up
/// to the benchmark.
template <class FilesKind>
class SignedInStore final {
public:
    explicit SignedInStore(const QString &server) {
        m_preferences.setValue(QStringLiteral("server"), server);
        StoreAccess::setAccount(m_store, QStringLiteral("user"));
        m_store.loadLibrary();
    }

    AppStore &operator*() { return m_store; }
    AppStore *operator->() { return &m_store; }
    const AppStore *operator->() const { return &m_store; }
    FilesKind &files() { return m_files; }

private:
    QtTransport m_transport;
    MemoryPreferences m_preferences;
    SystemClock m_clock;
    RecordingBrowser m_browser;
    FixedAppearance m_appearance;
    FilesKind m_files;
    MemoryCredentials m_credentials;
    FixedRandom m_random;
    RecordingBrowserSession m_browserSession;
    AppStore m_store{Platform{m_transport, m_preferences, m_clock, m_browser, m_appearance, m_files,
                              m_credentials, m_random, m_browserSession}};
};
