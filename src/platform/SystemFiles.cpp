#include "platform/SystemFiles.h"

#include "platform/FileError.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <numeric>
#include <optional>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

constexpr mode_t privateDirectory = 0700;
constexpr mode_t privateFile = 0600;

/// What a parser of a whole text likes to find behind it; kept free so that it copies nothing.
constexpr qint64 roomBehind = 64;

/// A temporary file of this age (seconds) was left by a process that ended in the middle of a
/// write.
constexpr qint64 abandonedAfter = 60;

[[noreturn]] void failSystem() {
    throw FileError::ofSystem(errno);
}

class Descriptor final {
public:
    explicit Descriptor(int number) : m_number(number) {
        if (m_number < 0)
            failSystem();
    }
    ~Descriptor() { ::close(m_number); }
    Q_DISABLE_COPY_MOVE(Descriptor)

    int number() const { return m_number; }

private:
    int m_number;
};

/// A file under a name that does not last unless it is kept.
class TemporaryName final {
public:
    explicit TemporaryName(QByteArray name) : m_name(std::move(name)) {}
    ~TemporaryName() {
        if (!m_kept)
            ::unlink(m_name.constData());
    }
    Q_DISABLE_COPY_MOVE(TemporaryName)

    void keep() { m_kept = true; }

private:
    QByteArray m_name;
    bool m_kept = false;
};

template <class Call>
auto repeatedly(Call call) {
    decltype(call()) result;
    do {
        result = call();
    } while (result < 0 && errno == EINTR);
    return result;
}

QString absoluteOr(const QString &directory, const QString &fallback) {
    return QDir::isAbsolutePath(directory) ? directory : fallback;
}

/// Follows no link; absent when there is nothing of that name.
std::optional<struct stat> statusOf(const QByteArray &path) {
    struct stat status;
    if (::lstat(path.constData(), &status) == 0)
        return status;
    if (errno != ENOENT)
        failSystem();
    return std::nullopt;
}

int flushToDisk(int file) {
#ifdef F_FULLFSYNC
    return ::fcntl(file, F_FULLFSYNC);
#else
    return ::fsync(file);
#endif
}

QString temporaryPrefix(const QFileInfo &target) {
    return QLatin1Char('.') + target.fileName() + QLatin1Char('.');
}

void removeAbandoned(const QFileInfo &target) {
    const auto limit = QDateTime::currentDateTimeUtc().addSecs(-abandonedAfter);
    const auto pattern = temporaryPrefix(target) + QLatin1String("??????");
    const auto left = target.dir().entryInfoList({pattern}, QDir::Files | QDir::Hidden);
    for (const auto &file : left) {
        if (file.lastModified() < limit)
            ::unlink(QFile::encodeName(file.filePath()).constData());
    }
}

} // namespace

const FileCalls &FileCalls::system() {
    static const FileCalls calls{::mkdir,  ::chmod,     ::mkostemp, ::fchmod,
                                 ::writev, flushToDisk, ::rename};
    return calls;
}

SystemFiles::~SystemFiles() {
    for (const int file : std::as_const(m_locks))
        ::close(file);
}

QString SystemFiles::stateDirectory() {
#ifdef Q_OS_MACOS
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
#else
    return absoluteOr(qEnvironmentVariable("XDG_STATE_HOME"),
                      QDir::homePath() + QLatin1String("/.local/state"));
#endif
}

QString SystemFiles::baseDirectory() {
#ifdef Q_OS_MACOS
    const auto path = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
#else
    const auto path = absoluteOr(qEnvironmentVariable("XDG_DATA_HOME"),
                                 QDir::homePath() + QLatin1String("/.local/share"));
#endif
    if (!exists(path))
        makePrivateDirectory(path);
    return path;
}

void SystemFiles::makePrivateDirectory(const QString &path) {
    const auto name = QFile::encodeName(path);
    if (m_calls.makeDirectory(name.constData(), privateDirectory) != 0) {
        if (errno == ENOENT) {
            const auto parent = QFileInfo(path).path();
            if (parent == path)
                failSystem();
            makePrivateDirectory(parent);
            return makePrivateDirectory(path);
        }
        if (errno != EEXIST)
            failSystem();
    }
    struct stat status;
    if (::stat(name.constData(), &status) != 0)
        failSystem();
    if (!S_ISDIR(status.st_mode))
        throw FileError(FileError::Code::notAFile);
    if ((status.st_mode & 07777) == privateDirectory)
        return;
    if (m_calls.changeMode(name.constData(), privateDirectory) != 0)
        failSystem();
}

bool SystemFiles::exists(const QString &path) {
    return statusOf(QFile::encodeName(path)).has_value();
}

QByteArray SystemFiles::read(const QString &path) {
    const auto name = QFile::encodeName(path);
    // Not blocking matters only for what is no plain file: nobody may ever write into a pipe.
    const Descriptor file(repeatedly(
        [&] { return ::open(name.constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK); }));
    struct stat status;
    if (::fstat(file.number(), &status) != 0)
        failSystem();
    if (!S_ISREG(status.st_mode))
        throw FileError(FileError::Code::notAFile);
    if (status.st_size > maximumSize)
        throw FileError(FileError::Code::tooLarge);

    QByteArray bytes;
    bytes.reserve(status.st_size + roomBehind);
    bytes.resize(status.st_size);
    qsizetype length = 0;
    while (length < bytes.size()) {
        const auto count = repeatedly([&] {
            return ::read(file.number(), bytes.data() + length,
                          static_cast<std::size_t>(bytes.size() - length));
        });
        if (count < 0)
            failSystem();
        if (count == 0)
            break;
        length += count;
    }
    bytes.resize(length);
    return bytes;
}

void SystemFiles::writeAtomically(const QString &path, const QList<QByteArray> &pieces) {
    const auto size =
        std::accumulate(pieces.begin(), pieces.end(), qint64(0),
                        [](qint64 sum, const QByteArray &piece) { return sum + piece.size(); });
    if (size > maximumSize)
        throw FileError(FileError::Code::tooLarge);
    const auto name = QFile::encodeName(path);
    const auto status = statusOf(name);
    if (status && !S_ISREG(status->st_mode))
        throw FileError(FileError::Code::notAFile);

    const QFileInfo target(path);
    removeAbandoned(target);
    const auto directory = QFile::encodeName(target.path());
    auto temporary =
        QFile::encodeName(target.path() + QLatin1Char('/') + temporaryPrefix(target)) + "XXXXXX";
    const Descriptor file(m_calls.createTemporary(temporary.data(), O_CLOEXEC));
    TemporaryName temporaryName(temporary);
    // Created for this user alone; a umask may have taken away even that.
    if (m_calls.changeOpenMode(file.number(), privateFile) != 0)
        failSystem();
    writeAll(file.number(), pieces);
    if (repeatedly([&] { return m_calls.flush(file.number()); }) != 0)
        failSystem();
    if (m_calls.rename(temporary.constData(), name.constData()) != 0)
        failSystem();
    temporaryName.keep();
    flushDirectory(directory);
}

void SystemFiles::writeAll(int file, const QList<QByteArray> &pieces) const {
    std::array<iovec, 512> batch;
    qsizetype next = 0;
    qsizetype written = 0; // of the piece at `next`
    while (next < pieces.size()) {
        std::size_t count = 0;
        for (auto at = next; at < pieces.size() && count < batch.size(); ++at, ++count) {
            const auto skipped = at == next ? written : 0;
            batch[count] = {const_cast<char *>(pieces[at].constData()) + skipped,
                            static_cast<std::size_t>(pieces[at].size() - skipped)};
        }
        const auto taken =
            repeatedly([&] { return m_calls.write(file, batch.data(), static_cast<int>(count)); });
        if (taken < 0)
            failSystem();
        written += taken;
        while (next < pieces.size() && written >= pieces[next].size()) {
            written -= pieces[next].size();
            ++next;
        }
    }
}

void SystemFiles::flushDirectory(const QByteArray &path) const {
    const Descriptor directory(
        repeatedly([&] { return ::open(path.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    const bool flushed = repeatedly([&] { return m_calls.flush(directory.number()); }) == 0;
    // Some file systems have no such thing as a directory to flush.
    if (!flushed && errno != EINVAL && errno != ENOTSUP)
        failSystem();
}

bool SystemFiles::lock(const QString &path) {
    if (m_locks.contains(path))
        return true;
    const auto name = QFile::encodeName(path);
    const int file = repeatedly([&] {
        return ::open(name.constData(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, privateFile);
    });
    if (file < 0)
        return true;
    const auto locking = repeatedly([&] { return ::flock(file, LOCK_EX | LOCK_NB); });
    if (locking != 0 && errno == EWOULDBLOCK) {
        ::close(file);
        return false;
    }
    m_locks.insert(path, file);
    return true;
}

void SystemFiles::setPrivate(const QString &path) {
    const auto name = QFile::encodeName(path);
    if (m_calls.changeMode(name.constData(), privateFile) != 0)
        failSystem();
}
