#include "storage/LibraryDisk.h"

#include "platform/FileError.h"
#include "platform/SystemFiles.h"
#include "records/DecodingError.h"
#include "tests/storage/SampleLibrary.h"
#include "tests/storage/TemporaryHome.h"
#include "tests/support/MemoryFiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QRegularExpression>

#include <gtest/gtest.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

TEST(LibraryDisk, theKeyIsTheHashOfServerAndUserAsWritten) {
    // From `printf 'http://127.0.0.1:4310|anonymous' | sha256sum` and the like.
    const auto guest = LibraryDisk::key(u"http://127.0.0.1:4310"_s, std::nullopt);
    EXPECT_EQ(guest, u"49a00685a24625761db6f1df921f7592cd9fe3269b2d6852fa20d3a78e4dc32e"_s);
    EXPECT_EQ(LibraryDisk::key(u"https://é.example"_s, u"user|1"_s),
              u"dc97841810a76b962c981d78b4896e5506451424b76885b0216cea5dd2db91d8"_s);
    EXPECT_EQ(LibraryDisk::key(u"http://127.0.0.1:4310"_s, u"anonymous"_s), guest);
    EXPECT_NE(LibraryDisk::key(u"http://127.0.0.1:4310/"_s, std::nullopt), guest);
    EXPECT_NE(LibraryDisk::key(u"http://127.0.0.1:4310"_s, u""_s), guest);
}

TEST(LibraryDisk, onlyTheReleasedProgramUsesTheReleasedDirectory) {
    EXPECT_EQ(LibraryDisk::directoryName(u"chat.quillmere.mac"_s), u"Quillmere"_s);
    for (const auto &other : {u"chat.quillmere.mac.local"_s, u"Chat.Quillmere.Mac"_s,
                              u"chat.quillmere"_s, u" chat.quillmere.mac"_s, u""_s}) {
        EXPECT_EQ(LibraryDisk::directoryName(other), u"Quillmere.Local"_s) << qPrintable(other);
    }
}

TEST(LibraryDisk, whatWasSavedIsLoadedFromAPrivateFile) {
    const TemporaryHome home;
    SystemFiles files;
    LibraryEncoder encoder;
    const auto library = SampleLibrary::library();
    const auto key = LibraryDisk::key(u"server"_s, u"user"_s);

    EXPECT_EQ(LibraryDisk::load(files, key), LocalLibrary());
    LibraryDisk::save(files, encoder, library, key);
    EXPECT_EQ(LibraryDisk::load(files, key), library);
    EXPECT_EQ(LibraryDisk::load(files, LibraryDisk::key(u"server"_s, std::nullopt)),
              LocalLibrary());

    const auto path = LibraryDisk::file(files, key);
    EXPECT_EQ(path, home.path(u"data/Quillmere.Local/"_s) + key + u".json"_s);
    EXPECT_EQ(modeOf(path), 0600);
    EXPECT_EQ(modeOf(QFileInfo(path).path()), 0700);
    // Seconds since 2001, with their fraction.
    EXPECT_TRUE(contentOf(path).contains("\"updatedAt\":721692800.123"));
    EXPECT_FALSE(contentOf(path).contains("null"));
}

TEST(LibraryDisk, guestLibrariesHaveNoQueueAndUnknownKeysAreIgnored) {
    MemoryFiles files;
    const auto path = LibraryDisk::file(files, u"key"_s);
    files.contents()[path] = R"({"new":[{"a":[1]}],"conversations":[],"saved":[],"sync":null})";
    EXPECT_EQ(LibraryDisk::load(files, u"key"_s), LocalLibrary());

    LibraryEncoder encoder;
    LibraryDisk::save(files, encoder, LocalLibrary(), u"key"_s);
    EXPECT_EQ(files.contents()[path], R"({"saved":[],"conversations":[]})");
}

TEST(LibraryDisk, aFailedSaveSaysSoEvenWhenOnlyTheModeFailed) {
    MemoryFiles files;
    LibraryEncoder encoder;
    const auto path = LibraryDisk::file(files, u"key"_s);
    files.failPrivacy(FileError::Code::notPermitted);
    EXPECT_THROW(LibraryDisk::save(files, encoder, SampleLibrary::library(), u"key"_s), FileError);
    EXPECT_TRUE(files.contents().contains(path));

    files.contents().clear();
    files.failWrites(FileError::Code::noSpace);
    EXPECT_THROW(LibraryDisk::save(files, encoder, LocalLibrary(), u"key"_s), FileError);
    EXPECT_FALSE(files.contents().contains(path));
}

TEST(LibraryDisk, brokenFilesFailInBoundedTimeAndStayAsTheyAre) {
    const TemporaryHome home;
    SystemFiles files;
    LibraryEncoder encoder;
    const auto key = u"key"_s;
    const auto path = LibraryDisk::file(files, key);
    LibraryDisk::save(files, encoder, SampleLibrary::library(), key);
    const auto whole = contentOf(path);
    const QByteArray deep(100'000, '[');

    const QByteArray texts[] = {
        "",
        "{}",
        "\0\0\0\0",
        R"({"saved":[],"conversations":null})",
        R"({"saved":[],"conversations":[],"sync":{"versions":{"saved|x":1.5},"pending":[]}})",
        whole.first(whole.size() / 2),
        whole.chopped(1),
        whole + "x",
        QByteArray(whole).replace("\"id\":\"", "\"id\":\"x"),
        deep,
        "{\"saved\":" + deep,
        "{\"saved\":[],\"conversations\":[],\"x\":" + deep + QByteArray(100'000, ']') + "}"};
    const auto expectFailure = [&](const QByteArray &start) {
        QElapsedTimer time;
        time.start();
        EXPECT_THROW(LibraryDisk::load(files, key), DecodingError) << start.left(80).constData();
        EXPECT_LT(time.elapsed(), 10'000);
    };
    for (const auto &text : texts) {
        ASSERT_TRUE(put(path, text));
        expectFailure(text);
        EXPECT_EQ(contentOf(path), text);
    }
    constexpr qint64 size = 200'000'000;
    for (const char *start : {"", "{\"saved\":[],\"conversations\":[],\"more\":\"", "[[[["}) {
        ASSERT_TRUE(put(path, start));
        ASSERT_EQ(::truncate(QFile::encodeName(path).constData(), size), 0);
        expectFailure(start);
        EXPECT_EQ(QFileInfo(path).size(), size);
    }
}

TEST(LibraryDisk, aDirectoryOrALinkInTheFilesPlaceIsNoEmptyLibrary) {
    const TemporaryHome home;
    SystemFiles files;
    const auto path = LibraryDisk::file(files, u"key"_s);
    ASSERT_TRUE(QDir().mkpath(path));
    EXPECT_THROW(LibraryDisk::load(files, u"key"_s), FileError);
    ASSERT_TRUE(QDir().rmdir(path));
    ASSERT_TRUE(QFile::link(home.path(u"nowhere"_s), path));
    EXPECT_THROW(LibraryDisk::load(files, u"key"_s), FileError);

    // Something else in the place of the whole directory.
    ASSERT_TRUE(QDir(QFileInfo(path).path()).removeRecursively());
    ASSERT_TRUE(put(QFileInfo(path).path(), "a file"));
    EXPECT_THROW(LibraryDisk::load(files, u"key"_s), FileError);
}
