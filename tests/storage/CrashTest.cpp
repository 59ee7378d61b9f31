#include <QDir>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

TEST(Crash, aKilledWriterLeavesTheOldFileOrTheNewOne) {
    const QTemporaryDir directory;
    QProcess writer;
    writer.start(QStringLiteral(STORAGE_WRITER), {directory.path(), u"250"_s});
    ASSERT_TRUE(writer.waitForFinished(100'000));
    EXPECT_EQ(writer.exitStatus(), QProcess::NormalExit);
    ASSERT_EQ(writer.exitCode(), 0) << writer.readAllStandardError().constData();

    const auto numbers = writer.readAllStandardOutput().split(' ');
    ASSERT_EQ(numbers.size(), 3);
    EXPECT_EQ(numbers[0].toInt(), 250);
    // It would prove nothing if no save had ended, or none had been cut short.
    EXPECT_GT(numbers[1].toInt(), 0);
    EXPECT_GT(numbers[2].trimmed().toInt(), 0);
}
