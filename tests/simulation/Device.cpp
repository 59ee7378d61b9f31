#include "tests/simulation/Device.h"

#include "platform/SystemFiles.h"
#include "storage/LibraryDisk.h"
#include "tests/support/FixedAppearance.h"
#include "tests/support/FixedRandom.h"
#include "tests/support/ManualClock.h"
#include "tests/support/RecordingBrowser.h"
#include "tests/support/RecordingBrowserSession.h"
#include "tests/support/Settle.h"

namespace {

/// The disk outlives a simulated crash anyway, and waiting for it takes most of the time.
FileCalls callsWithoutFlush() {
    auto calls = FileCalls::system();
    calls.flush = [](int) { return 0; };
    return calls;
}

/// A part of the real disk that a crashed program no longer reaches.
class DeviceFiles final : public Files {
public:
    explicit DeviceFiles(QString directory) : m_directory(std::move(directory)) {}

    void detach() { m_detached = true; }

    QString baseDirectory() override { return m_directory; }
    void makePrivateDirectory(const QString &path) override { m_files.makePrivateDirectory(path); }
    bool exists(const QString &path) override { return m_files.exists(path); }
    QByteArray read(const QString &path) override { return m_files.read(path); }
    void writeAtomically(const QString &path, const QList<QByteArray> &pieces) override {
        if (!m_detached)
            m_files.writeAtomically(path, pieces);
    }
    bool lock(const QString &path) override { return m_files.lock(path); }
    void setPrivate(const QString &path) override {
        if (!m_detached)
            m_files.setPrivate(path);
    }

private:
    QString m_directory;
    SystemFiles m_files{callsWithoutFlush()};
    bool m_detached = false;
};

} // namespace

struct Device::Run {
    Run(VirtualNetwork &network, int number, const QString &directory,
        MemoryPreferences &preferences, MemoryCredentials &credentials)
        : files(directory),
          line(network, number),
          store({line, preferences, clock, browser, appearance, files, credentials, random,
                 browserSession}) {}

    DeviceFiles files;
    ManualClock clock;
    RecordingBrowser browser;
    FixedAppearance appearance;
    FixedRandom random;
    RecordingBrowserSession browserSession;
    VirtualNetwork::Line line;
    AppStore store;
};

Device::Device(VirtualNetwork &network, int number, QString directory,
               std::chrono::milliseconds time)
    : m_network(network), m_number(number), m_directory(std::move(directory)), m_time(time) {
    start();
}

Device::~Device() {
    crash();
}

AppStore &Device::store() {
    return m_run->store;
}

void Device::start() {
    m_run = std::make_unique<Run>(m_network, m_number, m_directory, m_preferences, m_credentials);
    m_run->clock.advance(m_time);
    m_run->store.beginConnect();
}

void Device::crash() {
    m_run->files.detach();
    m_run->line.cut();
    settleAll();
    // What still waits is let go, so that it ends before the store does.
    while (m_run->clock.sleepers() > 0) {
        m_run->clock.advance(std::chrono::hours(1));
        settleAll();
    }
    m_run.reset();
}

void Device::advance(std::chrono::milliseconds duration) {
    m_time += duration;
    m_run->clock.advance(duration);
}

bool Device::isWaiting() const {
    return m_run->clock.sleepers() > 0;
}

QList<CaseCard> Device::guestCards(const QString &libraryKey) const {
    return LibraryDisk::load(m_run->files, libraryKey).saved;
}
