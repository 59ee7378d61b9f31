#include <QGuiApplication>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

/// What the program reports as its own fault fails the running test, and so does what QML warns of,
/// which begins with the place in its file.
void report(QtMsgType type, const QMessageLogContext &, const QString &message) {
    const auto text = message.toLocal8Bit();
    if (type == QtCriticalMsg || type == QtFatalMsg || text.startsWith("qrc:"))
        ADD_FAILURE() << "reported as a fault: " << text.constData();
    else
        std::fprintf(stderr, "%s\n", text.constData());
}

} // namespace

int main(int count, char **arguments) {
    testing::InitGoogleTest(&count, arguments);

    // Nothing of the person who runs the tests is read or changed.
    QTemporaryDir home;
    for (const auto *variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_STATE_HOME"})
        qputenv(variable, home.path().toLocal8Bit());
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qunsetenv("DBUS_SESSION_BUS_ADDRESS");

    QGuiApplication application(count, arguments);
    QGuiApplication::setApplicationName(QStringLiteral("Quillmere"));
    qInstallMessageHandler(report);
    return RUN_ALL_TESTS();
}
