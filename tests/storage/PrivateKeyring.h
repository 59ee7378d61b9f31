#pragma once

#include "tests/support/PrivateBus.h"

#include <QDBusConnection>

#include <memory>

/// A session bus of this test alone, and a real keyring on it. Both end with the object, and with
/// the process.
class PrivateKeyring final {
public:
    PrivateKeyring() = default;
    ~PrivateKeyring();
    Q_DISABLE_COPY_MOVE(PrivateKeyring)

    /// Starts the bus and makes it this process's own.
    bool startBus();
    /// Starts the keyring, unlocked.
    bool startKeyring();
    void lockKeyring();

    /// Stops the keyring in its tracks, or lets it go on.
    void setFrozen(bool frozen);

private:
    PrivateBus m_bus;
    std::unique_ptr<QProcess> m_keyring;
    QDBusConnection m_connection{QString()};
};
