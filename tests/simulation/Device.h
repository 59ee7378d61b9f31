#pragma once

#include "store/AppStore.h"
#include "tests/simulation/VirtualNetwork.h"
#include "tests/support/MemoryCredentials.h"
#include "tests/support/MemoryPreferences.h"

#include <memory>

/// One machine with its own disk, keyring and preferences, on which the program runs, crashes and
/// starts again.
class Device final {
public:
    Device(VirtualNetwork &network, int number, QString directory, std::chrono::milliseconds time);
    ~Device();
    Q_DISABLE_COPY_MOVE(Device)

    AppStore &store();
    void advance(std::chrono::milliseconds duration);
    /// Whether something waits for time to pass.
    bool isWaiting() const;

    /// Ends the program where it stands: nothing more reaches the disk or the network.
    void crash();
    void start();

    /// The saved cards in a library file of this machine.
    QList<CaseCard> guestCards(const QString &libraryKey) const;

private:
    /// What lives as long as the program runs.
    struct Run;

    VirtualNetwork &m_network;
    int m_number;
    QString m_directory;
    std::chrono::milliseconds m_time;
    MemoryCredentials m_credentials;
    MemoryPreferences m_preferences;
    std::unique_ptr<Run> m_run;
};
