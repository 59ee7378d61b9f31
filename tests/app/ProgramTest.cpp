#include "BuildSettings.h"
#include "platform/RunningInstance.h"
#include "platform/SystemFiles.h"
#include "storage/LibraryDisk.h"
#include "tests/storage/TemporaryHome.h"
#include "tests/support/Await.h"
#include "tests/support/PrivateBus.h"

#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDir>

#include <gtest/gtest.h>

#include <csignal>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

const auto id = QString::fromLatin1(BuildSettings::bundleId);
const auto program = QStringLiteral(PROGRAM);
const auto callback = u"quillmere-mac://auth/google?code=1"_s;

class Program : public testing::Test {
protected:
    void SetUp() override {
        // The service is nobody's: whatever runs on this machine is left alone.
        const auto own = LibraryDisk::directoryName(id);
        QDir(bus.folder(u"config"_s)).mkdir(own);
        ASSERT_TRUE(put(bus.folder(u"config/"_s + own + u'/' + own + u".conf"_s),
                        "[General]\nserver=http://127.0.0.1:1\n"));
        ASSERT_TRUE(
            put(bus.servicesFolder() + u'/' + id + u".service"_s,
                "[D-BUS Service]\nName=" + id.toUtf8() + "\nExec=" + program.toUtf8() + '\n'));
        ASSERT_TRUE(bus.start());
        desktop = QDBusConnection::connectToBus(bus.address(), u"desktop"_s);
    }
    void TearDown() override {
        // What the bus started would outlive it.
        const auto pid = desktop.interface()->servicePid(id);
        if (pid.isValid() && pid.value() != static_cast<uint>(::getpid()))
            ::kill(static_cast<pid_t>(pid.value()), SIGKILL);
        QDBusConnection::disconnectFromBus(u"desktop"_s);
    }

    /// Runs the program to its end; the exit code, -1 when it does not end.
    int run(const QStringList &arguments, const QProcessEnvironment &more) {
        auto process = bus.process();
        auto environment = process->processEnvironment();
        environment.insert(more);
        process->setProcessEnvironment(environment);
        process->setProcessChannelMode(QProcess::MergedChannels);
        std::optional<int> code;
        QObject::connect(process.get(), &QProcess::finished, process.get(),
                         [&](int exitCode) { code = exitCode; });
        process->start(program, arguments);
        const bool ended = eventually([&] { return code.has_value(); });
        output = QString::fromUtf8(process->readAll());
        if (!ended) {
            process->kill();
            process->waitForFinished();
        }
        return ended ? *code : -1;
    }

    PrivateBus bus;
    QDBusConnection desktop{QString()};
    QString output;
};

} // namespace

TEST_F(Program, aLaterProcessHandsOverWhatItWasStartedForAndEnds) {
    RunningInstance first(desktop, id);
    ASSERT_EQ(await(first.claim()), RunningInstance::Standing::first);
    QStringList calls;
    QObject::connect(&first, &RunningInstance::called, &first,
                     [&](const QStringList &addresses, const QString &token) {
                         calls.append(addresses.join(u' ') + u'|' + token);
                     });
    QProcessEnvironment wayland;
    wayland.insert(u"XDG_ACTIVATION_TOKEN"_s, u"permission"_s);
    QProcessEnvironment x11;
    x11.insert(u"DESKTOP_STARTUP_ID"_s, u"permission_TIME1"_s);

    EXPECT_EQ(run({}, {}), 0) << qPrintable(output);
    EXPECT_EQ(run({callback}, wayland), 0) << qPrintable(output);
    EXPECT_EQ(run({u"https://example.com"_s, u"--help"_s}, x11), 0) << qPrintable(output);
    EXPECT_EQ(calls, (QStringList{u"|"_s, callback + u"|permission"_s, u"|permission_TIME1"_s}));
    EXPECT_FALSE(QDir(bus.folder(u"data"_s)).exists(LibraryDisk::directoryName(id)))
        << "it must not touch what the first one has";
}

TEST_F(Program, theBusStartsItAndItAnswers) {
    const auto path = u'/' + QString(id).replace(u'.', u'/');
    for (const bool open : {true, false}) {
        auto call = QDBusMessage::createMethodCall(id, path, u"org.freedesktop.Application"_s,
                                                   open ? u"Open"_s : u"Activate"_s);
        if (open)
            call << QStringList{callback};
        call << QVariantMap();
        const QDBusPendingCall answering = desktop.asyncCall(call);
        QDBusPendingCallWatcher watcher(answering);
        ASSERT_TRUE(eventually([&] { return watcher.isFinished(); }));
        EXPECT_FALSE(watcher.isError()) << qPrintable(watcher.error().message());
    }
}

TEST_F(Program, withoutABusASecondProcessEndsForTheSakeOfTheLibraries) {
    const auto formerHome = qgetenv("XDG_DATA_HOME");
    qputenv("XDG_DATA_HOME", bus.folder(u"data"_s).toUtf8());
    SystemFiles files;
    ASSERT_TRUE(LibraryDisk::claim(files));
    qputenv("XDG_DATA_HOME", formerHome);
    QProcessEnvironment noBus;
    noBus.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, u"disabled:"_s);
    EXPECT_EQ(run({callback}, noBus), 1);
    EXPECT_TRUE(output.contains(u"runs already"_s)) << qPrintable(output);
}
