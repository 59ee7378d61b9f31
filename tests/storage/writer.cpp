// Lets a process save a library over and over, kills it at any instant of a save, and looks at the
// file.
// Does so as often as told, and tells what it saw; ends with 1 at the first file that is neither
// the last saved one nor the one after it.
//
//     writer DIRECTORY KILLS
#include "platform/SystemFiles.h"
#include "storage/LibraryDisk.h"
#include "tests/storage/SampleLibrary.h"

#include <QDir>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <random>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const QString key = LibraryDisk::key(u"server"_s, u"user"_s);

/// Each version has another length, so that no mixture of two could pass.
LocalLibrary version(const LocalLibrary &pattern, qint64 number) {
    auto library = pattern;
    library.sync->versions[u"number"_s] = number;
    library.conversations[static_cast<qsizetype>(number) % library.conversations.size()].title =
        QString(static_cast<qsizetype>(number % 97), u'x');
    return library;
}

struct Shared {
    std::atomic<qint64> saved = 0;
    std::atomic<bool> started = false;
};

[[noreturn]] void saveForEver(const LocalLibrary &pattern, Shared &shared) {
    SystemFiles files;
    LibraryEncoder encoder;
    shared.started = true;
    for (;;) {
        const auto next = shared.saved + 1;
        LibraryDisk::save(files, encoder, version(pattern, next), key);
        shared.saved = next;
    }
}

} // namespace

int main(int count, char **arguments) {
    if (count != 3)
        return 2;
    qputenv("XDG_DATA_HOME", arguments[1]);
    const int kills = QByteArray(arguments[2]).toInt();

    LocalLibrary pattern = SampleLibrary::library(20, 0);
    for (int number = 0; number < 40; ++number) {
        pattern.conversations.append(SampleLibrary::conversation(number));
        pattern.conversations.last().messages.last().content = QString(5000, u'a');
    }
    SystemFiles files;
    LibraryEncoder encoder;
    // However busy the machine is, a kill comes within the time of a save.
    constexpr int measuredSaves = 8;
    const auto begin = std::chrono::steady_clock::now();
    for (int number = measuredSaves; number-- > 0;)
        LibraryDisk::save(files, encoder, version(pattern, number), key);
    const std::chrono::microseconds save = std::chrono::duration_cast<std::chrono::microseconds>(
                                               std::chrono::steady_clock::now() - begin) /
                                           measuredSaves;
    const QDir directory(QFileInfo(LibraryDisk::file(files, key)).path());

    void *memory =
        ::mmap(nullptr, sizeof(Shared), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    auto &shared = *new (memory) Shared;
    std::mt19937 random(std::random_device{}());
    int inTheMiddle = 0;
    for (int kill = 0; kill < kills; ++kill) {
        const qint64 wholeSaves = shared.saved + random() % 3;
        shared.started = false;
        const auto process = ::fork();
        if (process == 0)
            saveForEver(pattern, shared);
        while (!shared.started || shared.saved < wholeSaves)
            ::usleep(100);
        ::usleep(static_cast<useconds_t>(random() % save.count()));
        ::kill(process, SIGKILL);
        ::waitpid(process, nullptr, 0);

        const qint64 last = shared.saved;
        const auto found = LibraryDisk::load(files, key);
        const auto number = found.sync->versions.value(u"number"_s);
        if ((number != last && number != last + 1) || found != version(pattern, number)) {
            std::fprintf(stderr, "saved %lld, found %lld\n", static_cast<long long>(last),
                         static_cast<long long>(number));
            return 1;
        }
        shared.saved = number;
        const auto left = directory.entryList({u".*"_s}, QDir::Files | QDir::Hidden);
        for (const auto &name : left)
            QFile::remove(directory.filePath(name));
        inTheMiddle += left.isEmpty() ? 0 : 1;
    }
    std::printf("%d %lld %d\n", kills, static_cast<long long>(shared.saved), inTheMiddle);
    return 0;
}
