#include "Database.h"
#include "DatabaseError.h"
#include "RunningService.h"

#include "tests/storage/TemporaryHome.h"

#include <gtest/gtest.h>

#include <QDir>

#include <sqlite3.h>

namespace {

class ServiceDatabase : public testing::Test {
protected:
    QString directory() const { return m_home.filePath(QStringLiteral("deep/service")); }
    QString file() const { return directory() + QStringLiteral("/service.db"); }

    /// Starts a service over the database, and gives how many cases it then has.
    qint64 startOnce(QList<QByteArray> dataSet = sampleCases()) {
        Service service({directory(), 0, std::move(dataSet)});
        service.start();
        const auto reply = httplib::Client("127.0.0.1", service.port()).Get("/v1/health");
        return Json::decode<Health>(QByteArray::fromStdString(reply->body)).total;
    }

    qint64 number(const QByteArray &sql) {
        Database database(directory());
        Database::Access access(database);
        auto query = access.prepare(sql);
        query.next();
        return query.integer(0);
    }

    void execute(const QByteArray &sql) {
        Database database(directory());
        Database::Access(database).execute(sql);
    }

private:
    QTemporaryDir m_home;
};

TEST_F(ServiceDatabase, IsNobodyElsesToRead) {
    const auto before = ::umask(0);
    {
        Service service({directory(), 0, sampleCases()});
        service.start();
        EXPECT_EQ(modeOf(directory()), 0700);
        EXPECT_EQ(modeOf(file()), 0600);
        EXPECT_EQ(modeOf(file() + QStringLiteral("-wal")), 0600);
        EXPECT_EQ(modeOf(file() + QStringLiteral("-shm")), 0600);
    }
    ::umask(before);

    setMode(directory(), 0755);
    setMode(file(), 0644);
    startOnce();
    EXPECT_EQ(modeOf(directory()), 0700);
    EXPECT_EQ(modeOf(file()), 0600);
}

TEST_F(ServiceDatabase, IsFilledOnceAndAnewOnlyForOtherData) {
    EXPECT_EQ(startOnce(), 7);
    execute("INSERT INTO accounts (id, handle, foldedHandle, password)"
            " VALUES ('1', 'Kept', 'kept', '');"
            "UPDATE cases SET significance = 99");
    const auto filled = contentOf(file());

    // The same data: not a byte changes.
    EXPECT_EQ(startOnce(), 7);
    EXPECT_EQ(number("SELECT count(*) FROM cases WHERE significance = 99"), 7);
    EXPECT_EQ(contentOf(file()), filled);

    // Other data: the cases are new, what is not a case stays.
    EXPECT_EQ(startOnce(largerSampleCases()), 8);
    EXPECT_EQ(number("SELECT count(*) FROM cases WHERE significance = 99"), 0);
    EXPECT_EQ(number("SELECT count(*) FROM case_words WHERE case_words MATCH 'lantern'"), 5);
    EXPECT_EQ(number("SELECT count(*) FROM accounts WHERE handle = 'Kept'"), 1);

    // Data that cannot be read: what was there stays.
    auto broken = sampleCases();
    broken[1].chop(1);
    EXPECT_THROW(startOnce(broken), std::exception);
    auto doubled = sampleCases();
    doubled.append(doubled[0]);
    EXPECT_THROW(startOnce(doubled), DatabaseError);
    EXPECT_EQ(number("SELECT count(*) FROM cases"), 8);
}

TEST_F(ServiceDatabase, OfOthersIsLeftAsItIs) {
    QDir().mkpath(directory());
    sqlite3 *foreign = nullptr;
    ASSERT_EQ(sqlite3_open(file().toUtf8().constData(), &foreign), SQLITE_OK);
    sqlite3_exec(foreign, "CREATE TABLE cases (x); INSERT INTO cases VALUES (1)", nullptr, nullptr,
                 nullptr);
    sqlite3_close(foreign);
    const auto database = contentOf(file());
    ASSERT_GT(database.size(), 100);

    for (const QByteArray &bytes :
         {database, QByteArray("no database"), QByteArray(5000, '\0'), database.first(80)}) {
        ASSERT_TRUE(put(file(), bytes));
        EXPECT_THROW(startOnce(), DatabaseError);
        EXPECT_EQ(contentOf(file()), bytes);
        EXPECT_EQ(QDir(directory()).entryList(QDir::Files).size(), 1);
    }
}

TEST_F(ServiceDatabase, ThatIsDamagedOrTooNewIsLeftAsItIs) {
    startOnce();
    const auto sound = contentOf(file());
    execute("PRAGMA user_version = 1000");
    const auto newer = contentOf(file());
    for (const auto &bytes : {newer, sound.first(100) + QByteArray(sound.size() - 100, 'x')}) {
        ASSERT_TRUE(put(file(), bytes));
        EXPECT_THROW(startOnce(largerSampleCases()), DatabaseError);
        EXPECT_EQ(contentOf(file()), bytes);
    }
}

TEST_F(ServiceDatabase, IsNotFilledWhileThePortIsTaken) {
    RunningService other;
    Service second({directory(), other.service.port(), sampleCases()});
    EXPECT_THROW(second.start(), std::runtime_error);
    EXPECT_EQ(other.get("/v1/health").status, 200);
    EXPECT_EQ(number("SELECT count(*) FROM sqlite_schema"), 0);
}

} // namespace
