#include "bench/HandWritten.h"
#include "bench/Measure.h"
#include "bench/SampleRecords.h"
#include "platform/SystemFiles.h"
#include "records/Json.h"
#include "storage/LibraryDisk.h"

#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

#include <cstdio>
#include <fcntl.h>
#include <malloc.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr auto dates = DateForm::secondsSince2001;
const QString key = QStringLiteral("library");

/// One buffer, and every step that makes a save atomic, durable and private; nothing else.
void writeBare(const QByteArray &directory, const QByteArray &path, const QByteArray &bytes) {
    const auto temporary = path + ".new";
    const int file = ::open(temporary.constData(), O_CREAT | O_WRONLY | O_TRUNC | O_CLOEXEC, 0600);
    require(file >= 0, "create");
    require(::write(file, bytes.constData(), static_cast<std::size_t>(bytes.size())) ==
                bytes.size(),
            "write");
    require(::fsync(file) == 0 && ::close(file) == 0, "flush");
    require(::rename(temporary.constData(), path.constData()) == 0, "rename");
    const int folder = ::open(directory.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    require(::fsync(folder) == 0 && ::close(folder) == 0, "flush the directory");
    require(::chmod(path.constData(), 0600) == 0, "mode");
}

std::size_t bytesInUse() {
    const auto info = ::mallinfo2();
    return info.uordblks + info.hblkhd;
}

void tellMemory(SystemFiles &files, qint64 fileSize) {
    const auto size = static_cast<double>(fileSize);
    const auto before = bytesInUse();
    const auto library = LibraryDisk::load(files, key);
    const auto loaded = bytesInUse();
    LibraryEncoder encoder;
    const auto pieces = encoder.encode(library);
    const auto kept = bytesInUse();
    std::fprintf(stderr, "File %.1f MB, records %.2f times that, kept texts %.2f times that\n",
                 size / 1e6, static_cast<double>(loaded - before) / size,
                 static_cast<double>(kept - loaded) / size);
}

} // namespace

int main(int argc, char **argv) {
    const QTemporaryDir home;
    qputenv("XDG_DATA_HOME", QFile::encodeName(home.path()));
    SystemFiles files;
    auto library = SampleRecords::keptLibrary();
    const auto text = Json::encode(library, dates);
    const auto path = QFile::encodeName(LibraryDisk::file(files, key));
    const auto directory = QFile::encodeName(QFileInfo(LibraryDisk::file(files, key)).path());

    LibraryEncoder encoder;
    LibraryDisk::save(files, encoder, library, key);
    require(files.read(LibraryDisk::file(files, key)) == text, "the saved file");
    require(LibraryDisk::load(files, key) == library, "the loaded library");
    require(HandWritten::decodeLibrary(text) == library, "the hand-written decoder");
    require(HandWritten::encode(library) == text, "the hand-written encoder");
    tellMemory(files, text.size());

    measure("decode/kept library/codec",
            [&] { benchmark::DoNotOptimize(Json::decode<LocalLibrary>(text, dates)); });
    measure("decode/kept library/reference",
            [&] { benchmark::DoNotOptimize(HandWritten::decodeLibrary(text)); });
    measure("decode/from its file/codec",
            [&] { benchmark::DoNotOptimize(LibraryDisk::load(files, key)); });
    measure("decode/from its file/reference", [&] {
        QFile file(QFile::decodeName(path));
        require(file.open(QIODevice::ReadOnly), "open");
        benchmark::DoNotOptimize(HandWritten::decodeLibrary(file.readAll()));
    });
    measure("encode/kept library/codec",
            [&] { benchmark::DoNotOptimize(Json::encode(library, dates)); });
    measure("encode/kept library/reference",
            [&] { benchmark::DoNotOptimize(HandWritten::encode(library)); });
    measure("encode/first save/codec", [&] {
        LibraryEncoder fresh;
        benchmark::DoNotOptimize(fresh.encode(library));
    });
    measure("encode/first save/reference",
            [&] { benchmark::DoNotOptimize(HandWritten::encode(library)); });

    const auto change = [](QString &content) {
        if (content.endsWith(QLatin1Char('+')))
            content.chop(1);
        else
            content += QLatin1Char('+');
    };
    const auto changeCard = [&] { change(library.saved[250].title); };
    const auto changeConversation = [&] {
        change(library.conversations[500].messages.last().content);
        library.conversations.move(500, 0);
    };
    const auto encode = [&] { benchmark::DoNotOptimize(encoder.encode(library)); };
    measure("change/one card", encode, changeCard);
    measure("change/one conversation", encode, changeConversation);
    measure(
        "save/one card/codec", [&] { LibraryDisk::save(files, encoder, library, key); },
        changeCard);
    measure(
        "save/one card/reference", [&] { writeBare(directory, path, text); }, changeCard);

    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
