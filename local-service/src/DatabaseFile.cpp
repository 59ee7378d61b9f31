#include "DatabaseFile.h"

#include "DatabaseError.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <array>
#include <cerrno>
#include <cstring>
#include <string_view>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/// The header of the file format: its first bytes, and where the application's own number stands.
constexpr std::string_view formatName("SQLite format 3\0", 16);
constexpr std::size_t headerSize = 100;
constexpr std::size_t applicationIdOffset = 68;

class Descriptor final {
public:
    explicit Descriptor(int number) : m_number(number) {}
    ~Descriptor() {
        if (m_number >= 0)
            ::close(m_number);
    }
    Descriptor(const Descriptor &) = delete;
    Descriptor &operator=(const Descriptor &) = delete;

    int number() const { return m_number; }

private:
    int m_number;
};

[[noreturn]] void fail(const char *what, const QString &path, int error) {
    throw DatabaseError(std::string(what) + " " + path.toStdString() + ": " + std::strerror(error));
}

void prepareDirectory(const QString &directory) {
    const auto name = QFile::encodeName(directory);
    QDir().mkpath(QFileInfo(directory).absolutePath());
    if (::mkdir(name.constData(), 0700) != 0 && errno != EEXIST)
        fail("Cannot make the directory", directory, errno);
    if (::chmod(name.constData(), 0700) != 0)
        fail("Cannot use the directory", directory, errno);
}

bool isOurs(int file) {
    std::array<char, headerSize> header{};
    if (::pread(file, header.data(), header.size(), 0) != static_cast<ssize_t>(header.size()))
        return false;
    return std::string_view(header.data(), formatName.size()) == formatName &&
           qFromBigEndian<quint32>(header.data() + applicationIdOffset) ==
               DatabaseFile::applicationId;
}

} // namespace

QString DatabaseFile::prepare(const QString &directory) {
    prepareDirectory(directory);
    const QString path = directory + QStringLiteral("/service.db");

    const Descriptor file(
        ::open(QFile::encodeName(path).constData(), O_RDWR | O_CREAT | O_CLOEXEC, 0600));
    struct stat status {};
    if (file.number() < 0 || ::fstat(file.number(), &status) != 0)
        fail("Cannot open the database", path, errno);
    if (status.st_size > 0 && !isOurs(file.number()))
        throw DatabaseError(path.toStdString() + " is not a database of this service. It is left "
                                                 "as it is; move it away to begin anew.");
    // The mode that open() was given is only a wish, and an older file may have a wider one.
    if (::fchmod(file.number(), 0600) != 0)
        fail("Cannot protect the database", path, errno);
    return path;
}

bool DatabaseFile::isEmpty(const QString &path) {
    return QFileInfo(path).size() == 0;
}
