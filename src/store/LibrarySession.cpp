// The library of the current server and user: in from its file, and out again.
#include "platform/Start.h"
#include "storage/LibraryDisk.h"
#include "store/AppStore.h"
#include "sync/LibrarySync.h"

namespace {

const QString unreadable = QStringLiteral(
    "Could not read the library saved on this Mac. Existing files have been kept; saving is "
    "disabled until they can be recovered.");
const QString paused = QStringLiteral("Saving is paused to protect the existing library file.");
const QString notSaved = QStringLiteral("Could not save changes on this Mac. ");
const QString guestStatus = QStringLiteral("Guest library stays on this Mac.");

} // namespace

void AppStore::setLibrary(const LocalLibrary &library) {
    // Not compared: both may be long, and whoever sets a library has another one.
    m_library = library;
    Q_EMIT libraryChanged();
}

void AppStore::loadLibrary() {
    publish(m_wall, {}, &AppStore::wallChanged);
    publish(m_wallLoading, false, &AppStore::wallLoadingChanged);
    publish(m_wallError, {}, &AppStore::wallErrorChanged);
    publish(m_wallOffline, false, &AppStore::wallOfflineChanged);
    publish(m_wallMutations, {}, &AppStore::wallMutationsChanged);
    publish(m_pinning, false, &AppStore::pinningChanged);
    publish(m_quota, {}, &AppStore::quotaChanged);
    publish(m_openingMembership, false, &AppStore::openingMembershipChanged);
    publish(m_refreshingAccount, false, &AppStore::refreshingAccountChanged);
    publish(m_requestedCases, {}, &AppStore::requestedCasesChanged);
    publish(m_requestingCases, {}, &AppStore::requestingCasesChanged);

    if (m_account)
        start(*this, [this] { return refreshWallAndQuota(); });

    std::optional<LocalLibrary> library;
    bool claimed = false;
    try {
        // Claimed first: what another process writes until it ends is in the file by then.
        claimed = LibraryDisk::claim(m_platform.files);
        library = LibraryDisk::load(m_platform.files, libraryKey());
    } catch (...) {
        // Whatever the reason, the file stays and nothing is written over it.
    }
    if (library && m_account)
        LibrarySync::prepare(*library);
    m_libraryLoaded = true;
    m_libraryWritable = library && claimed;
    setLibrary(library.value_or(LocalLibrary()));
    if (!library)
        setNotice(unreadable);
    else if (!claimed)
        setNotice(text(QStringLiteral("libraryInUse")));
    else if (m_account)
        persist();
    else
        publish(m_syncStatus, guestStatus, &AppStore::syncStatusChanged);
}

Task<void> AppStore::refreshWallAndQuota() {
    auto refreshingWall = refreshWall();
    co_await refreshingWall;
    auto refreshingQuota = refreshQuota();
    co_await refreshingQuota;
}

void AppStore::writeLibrary(const QString &key) {
    m_libraryOnDisk = false;
    LibraryDisk::save(m_platform.files, m_libraryEncoder, m_library, key);
    m_libraryOnDisk = true;
}

void AppStore::persist() {
    if (!m_libraryWritable) {
        setNotice(paused);
        return;
    }
    try {
        writeLibrary(libraryKey());
    } catch (...) {
        setNotice(notSaved + describe(std::current_exception()));
        return;
    }
    scheduleSync();
}
