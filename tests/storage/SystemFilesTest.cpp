#include "platform/SystemFiles.h"

#include "platform/FileError.h"
#include "tests/storage/TemporaryHome.h"

#include <QDir>
#include <QFileInfo>

#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using testing::ElementsAre;
using Code = FileError::Code;

namespace {

template <class Action>
std::optional<Code> failureOf(Action action) {
    try {
        action();
        return std::nullopt;
    } catch (const FileError &error) {
        return error.code();
    }
}

class UmaskGuard final {
public:
    explicit UmaskGuard(mode_t mask) : m_former(::umask(mask)) {}
    ~UmaskGuard() { ::umask(m_former); }
    Q_DISABLE_COPY_MOVE(UmaskGuard)

private:
    mode_t m_former;
};

QStringList namesIn(const QString &directory) {
    return QDir(directory).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                     QDir::NoDotAndDotDot);
}

/// System calls that work, but for what a test has put in place.
struct Injected {
    std::vector<std::string> order;
    std::string failing;
    /// Which call of that name fails, from 1.
    int occurrence = 1;
    int number = 0;
    std::function<void()> beforeWrite;
    bool stutters = false;

    bool fails(const char *name) {
        order.emplace_back(name);
        if (failing != name || --occurrence != 0)
            return false;
        errno = number;
        return true;
    }
};

Injected injected;

const FileCalls &injectedCalls() {
    static const FileCalls calls{
        [](const char *path, mode_t mode) {
            return injected.fails("makeDirectory") ? -1 : ::mkdir(path, mode);
        },
        [](const char *path, mode_t mode) {
            return injected.fails("changeMode") ? -1 : ::chmod(path, mode);
        },
        [](char *pattern, int flags) {
            return injected.fails("create") ? -1 : ::mkostemp(pattern, flags);
        },
        [](int file, mode_t mode) {
            return injected.fails("changeOpenMode") ? -1 : ::fchmod(file, mode);
        },
        [](int file, const iovec *pieces, int count) -> ssize_t {
            if (injected.beforeWrite)
                injected.beforeWrite();
            if (injected.fails("write"))
                return -1;
            if (!injected.stutters)
                return ::writev(file, pieces, count);
            static int turn = 0;
            if (++turn % 3 == 0) {
                errno = EINTR;
                return -1;
            }
            while (count > 1 && pieces->iov_len == 0)
                ++pieces, --count;
            return ::write(file, pieces->iov_base, std::min<size_t>(pieces->iov_len, 3));
        },
        [](int file) { return injected.fails("flush") ? -1 : ::fsync(file); },
        [](const char *from, const char *to) {
            return injected.fails("rename") ? -1 : ::rename(from, to);
        }};
    return calls;
}

class SystemFilesTest : public testing::Test {
protected:
    void SetUp() override {
        injected = {};
        ASSERT_TRUE(QDir().mkpath(directory));
    }

    TemporaryHome home;
    QString directory = home.path(u"folder"_s);
    QString path = directory + u"/library.json"_s;
    SystemFiles files;
};

} // namespace

TEST_F(SystemFilesTest, aLockIsHeldUntilItsHolderEnds) {
    {
        SystemFiles holder;
        EXPECT_TRUE(holder.lock(path));
        EXPECT_TRUE(holder.lock(path));
        EXPECT_FALSE(files.lock(path));
        EXPECT_TRUE(files.lock(path + u"2"_s));
    }
    EXPECT_TRUE(files.lock(path));
    EXPECT_TRUE(files.lock(directory + u"/no such folder/lock"_s)) << "nobody is kept out";
    EXPECT_TRUE(QFileInfo::exists(path));
}

TEST_F(SystemFilesTest, filesArePrivateWhateverTheUmaskAndWhateverWasThere) {
    for (const mode_t mask : {0000, 0022, 0077, 0777}) {
        const UmaskGuard guard(mask);
        for (const int former : {-1, 0666, 0400, 0000}) {
            QFile::remove(path);
            if (former >= 0) {
                ASSERT_TRUE(put(path, "old"));
                setMode(path, former);
            }
            files.writeAtomically(path, {"one ", "", "two"});
            EXPECT_EQ(contentOf(path), "one two");
            EXPECT_EQ(modeOf(path), 0600) << mask << " " << former;
        }
    }
    setMode(path, 0644);
    files.setPrivate(path);
    EXPECT_EQ(modeOf(path), 0600);
}

TEST_F(SystemFilesTest, directoriesArePrivateAndTheirParentsLeftAlone) {
    for (const mode_t mask : {0000, 0022, 0777}) {
        const UmaskGuard guard(mask);
        for (const int former : {-1, 0777, 0755, 0500, 0700}) {
            const auto parent = home.path(u"parent"_s);
            ASSERT_TRUE(QDir(parent).removeRecursively());
            ASSERT_EQ(::mkdir(QFile::encodeName(parent).constData(), 0777), 0);
            setMode(parent, 0755);
            const auto wanted = parent + (former < 0 ? u"/made/on/the/way"_s : u"/there"_s);
            if (former >= 0) {
                ASSERT_EQ(::mkdir(QFile::encodeName(wanted).constData(), 0700), 0);
                setMode(wanted, former);
            }
            files.makePrivateDirectory(wanted);
            EXPECT_EQ(modeOf(wanted), 0700) << mask << " " << former;
            EXPECT_EQ(modeOf(parent), 0755);
            if (former < 0) {
                EXPECT_EQ(modeOf(parent + u"/made/on"_s), 0700);
            }
        }
    }
    ASSERT_TRUE(put(path, "a file"));
    EXPECT_EQ(failureOf([&] { files.makePrivateDirectory(path); }), Code::notAFile);
    EXPECT_EQ(failureOf([&] { files.makePrivateDirectory(path + u"/below"_s); }), Code::notFound);
    EXPECT_EQ(contentOf(path), "a file");
}

TEST_F(SystemFilesTest, theBaseIsTheUsersDataDirectory) {
    EXPECT_EQ(files.baseDirectory(), home.path(u"data"_s));
    EXPECT_EQ(modeOf(home.path(u"data"_s)), 0700);

    const auto formerHome = qgetenv("HOME");
    qputenv("HOME", QFile::encodeName(home.path(u"user"_s)));
    for (const auto *value : {"", "relative/path"}) {
        qputenv("XDG_DATA_HOME", value);
        qputenv("XDG_STATE_HOME", value);
        EXPECT_EQ(files.baseDirectory(), home.path(u"user/.local/share"_s));
        EXPECT_EQ(SystemFiles::stateDirectory(), home.path(u"user/.local/state"_s));
    }
    qputenv("HOME", formerHome);
}

TEST_F(SystemFilesTest, nobodyElseSeesTheNewContentWhileItIsWritten) {
    const UmaskGuard guard(0000);
    ASSERT_TRUE(put(path, "old"));
    injected.beforeWrite = [&] {
        const auto names = namesIn(directory);
        EXPECT_EQ(names.size(), 2);
        for (const auto &name : names) {
            if (name != u"library.json"_s) {
                EXPECT_EQ(modeOf(directory + u'/' + name), 0600);
            }
        }
        EXPECT_EQ(contentOf(path), "old");
    };
    SystemFiles(injectedCalls()).writeAtomically(path, {"new"});
    EXPECT_THAT(injected.order,
                ElementsAre("create", "changeOpenMode", "write", "flush", "rename", "flush"));
    EXPECT_EQ(contentOf(path), "new");
}

TEST_F(SystemFilesTest, eachFailedStepKeepsOneWholeFileAndNoRemains) {
    struct Row {
        const char *step;
        int occurrence;
        int number;
        Code code;
        bool replaced;
    };
    const Row rows[] = {
        {"create", 1, EACCES, Code::notPermitted, false},
        {"create", 1, EROFS, Code::readOnly, false},
        {"create", 1, EDQUOT, Code::noSpace, false},
        {"changeOpenMode", 1, EPERM, Code::notPermitted, false},
        {"write", 1, ENOSPC, Code::noSpace, false},
        {"write", 2, ENOSPC, Code::noSpace, false},
        {"write", 3, EIO, Code::deviceFailed, false},
        {"write", 2, EFBIG, Code::tooLarge, false},
        {"flush", 1, EIO, Code::deviceFailed, false},
        {"flush", 1, EINVAL, Code::unknown, false},
        {"rename", 1, EISDIR, Code::notAFile, false},
        {"rename", 1, ENOENT, Code::notFound, false},
        {"flush", 2, EIO, Code::deviceFailed, true},
    };
    const QList<QByteArray> pieces(1500, QByteArray("piece "));
    for (const auto &row : rows) {
        for (const bool existing : {true, false}) {
            QFile::remove(path);
            if (existing) {
                ASSERT_TRUE(put(path, "old"));
            }
            injected = {};
            injected.failing = row.step;
            injected.occurrence = row.occurrence;
            injected.number = row.number;
            SystemFiles failing(injectedCalls());
            EXPECT_EQ(failureOf([&] { failing.writeAtomically(path, pieces); }), row.code)
                << row.step << row.occurrence;
            EXPECT_EQ(contentOf(path), row.replaced ? pieces.join()
                                       : existing   ? QByteArray("old")
                                                    : QByteArray());
            EXPECT_EQ(namesIn(directory).size(), existing || row.replaced ? 1 : 0) << row.step;
        }
    }
    // A file system on which directories cannot be flushed is no failure.
    injected = {};
    injected.failing = "flush";
    injected.occurrence = 2;
    injected.number = EINVAL;
    EXPECT_EQ(failureOf([&] { SystemFiles(injectedCalls()).writeAtomically(path, {"x"}); }),
              std::nullopt);

    for (const auto *step : {"makeDirectory", "changeMode"}) {
        injected = {};
        injected.failing = step;
        injected.number = EROFS;
        setMode(directory, 0755);
        EXPECT_EQ(failureOf([&] { SystemFiles(injectedCalls()).makePrivateDirectory(directory); }),
                  Code::readOnly);
    }
}

TEST_F(SystemFilesTest, shortAndInterruptedWritesLoseNothing) {
    QList<QByteArray> pieces;
    for (int at = 0; at < 1300; ++at)
        pieces.append(QByteArray::number(at).repeated(at % 4));
    injected.stutters = true;
    SystemFiles(injectedCalls()).writeAtomically(path, pieces);
    EXPECT_EQ(contentOf(path), pieces.join());

    files.writeAtomically(path, {});
    EXPECT_EQ(QFileInfo(path).size(), 0);
    EXPECT_TRUE(files.exists(path));
    EXPECT_EQ(files.read(path), "");
}

TEST_F(SystemFilesTest, onlyPlainFilesAreReadAndReplaced) {
    const auto elsewhere = home.path(u"elsewhere"_s);
    ASSERT_TRUE(put(elsewhere, "of somebody else"));
    const auto link = directory + u"/link"_s;
    const auto dangling = directory + u"/dangling"_s;
    const auto folder = directory + u"/folder"_s;
    const auto pipe = directory + u"/pipe"_s;
    ASSERT_TRUE(QFile::link(elsewhere, link));
    ASSERT_TRUE(QFile::link(home.path(u"nowhere"_s), dangling));
    ASSERT_TRUE(QDir().mkpath(folder + u"/inside"_s));
    ASSERT_EQ(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);

    const auto names = namesIn(directory);
    for (const auto &place : {link, dangling, folder, pipe}) {
        EXPECT_TRUE(files.exists(place)) << qPrintable(place);
        EXPECT_EQ(failureOf([&] { files.read(place); }), Code::notAFile) << qPrintable(place);
        EXPECT_EQ(failureOf([&] { files.writeAtomically(place, {"x"}); }), Code::notAFile);
    }
    EXPECT_EQ(namesIn(directory), names);
    EXPECT_EQ(contentOf(elsewhere), "of somebody else");
    EXPECT_TRUE(QFileInfo(link).isSymLink() && QFileInfo(dangling).isSymLink());
    EXPECT_FALSE(QFileInfo::exists(home.path(u"nowhere"_s)));

    EXPECT_FALSE(files.exists(path));
    EXPECT_EQ(failureOf([&] { files.read(path); }), Code::notFound);
    EXPECT_EQ(failureOf([&] { files.setPrivate(path); }), Code::notFound);
    EXPECT_EQ(failureOf([&] { files.writeAtomically(home.path(u"no/such/x"_s), {"x"}); }),
              Code::notFound);
    EXPECT_EQ(failureOf([&] { files.exists(elsewhere + u"/below"_s); }), Code::notFound);
}

TEST_F(SystemFilesTest, aHugeFileIsRefusedBeforeItIsRead) {
    ASSERT_TRUE(put(path, "x"));
    ASSERT_EQ(::truncate(QFile::encodeName(path).constData(), qint64(1) << 36), 0);
    EXPECT_EQ(failureOf([&] { files.read(path); }), Code::tooLarge);
    const QList<QByteArray> pieces(1025, QByteArray(1 << 20, 'x'));
    EXPECT_EQ(failureOf([&] { files.writeAtomically(directory + u"/other"_s, pieces); }),
              Code::tooLarge);
    EXPECT_FALSE(files.exists(directory + u"/other"_s));
}

TEST_F(SystemFilesTest, whatAKilledWriteLeftGoesWithALaterOne) {
    const auto old = directory + u"/.library.json.abcdef"_s;
    const auto young = directory + u"/.library.json.ghijkl"_s;
    const auto ofAnother = directory + u"/.other.json.abcdef"_s;
    for (const auto &file : {old, young, ofAnother}) {
        ASSERT_TRUE(put(file, "half"));
    }
    const timespec longAgo[2] = {{1000000000, 0}, {1000000000, 0}};
    for (const auto &file : {old, ofAnother}) {
        ASSERT_EQ(::utimensat(AT_FDCWD, QFile::encodeName(file).constData(), longAgo, 0), 0);
    }
    files.writeAtomically(path, {"new"});
    EXPECT_FALSE(files.exists(old));
    EXPECT_TRUE(files.exists(young));
    EXPECT_TRUE(files.exists(ofAnother));
}
