#include "app/Launch.h"

#include "app/WindowOpener.h"
#include "platform/FileError.h"
#include "platform/RunningInstance.h"
#include "signin/GoogleAuthorization.h"
#include "storage/LibraryDisk.h"

#include <QCoreApplication>

namespace {

using Standing = RunningInstance::Standing;

/// What the desktop wants to be opened.
QStringList addresses() {
    auto arguments = QCoreApplication::arguments().mid(1);
    arguments.removeIf([](const QString &argument) {
        return !argument.startsWith(GoogleAuthorization::callbackScheme + QLatin1Char(':'));
    });
    return arguments;
}

bool claimLibraries(Files &files) {
    try {
        return LibraryDisk::claim(files);
    } catch (const FileError &) {
        // The window will tell what is wrong with the directory.
        return true;
    }
}

} // namespace

QString Launch::activationToken() {
    const auto token = qEnvironmentVariable("XDG_ACTIVATION_TOKEN");
    return token.isEmpty() ? qEnvironmentVariable("DESKTOP_STARTUP_ID") : token;
}

Task<void> Launch::openWindow(RunningInstance *instance, WindowOpener *windows, Files *files,
                              QString activationToken) {
    auto claiming = instance->claim();
    Standing standing = co_await claiming;
    if (standing == Standing::later) {
        auto telling = instance->handOver(addresses(), activationToken);
        const bool told = co_await telling;
        if (told) {
            QCoreApplication::exit(0);
            co_return;
        }
        // Perhaps it was just ending.
        auto claimingAgain = instance->claim();
        standing = co_await claimingAgain;
    }
    // Without a bus nobody can be told anything, but two processes shall not write the libraries.
    if (standing == Standing::later || (standing == Standing::unknown && !claimLibraries(*files))) {
        qWarning("Quillmere runs already, but does not answer.");
        QCoreApplication::exit(1);
    } else if (!windows->open()) {
        QCoreApplication::exit(1);
    }
}
