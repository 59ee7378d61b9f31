#include "platform/SessionBus.h"

#include <QFileInfo>

bool SessionBus::isThere() {
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return true;
    const auto directory = qEnvironmentVariable("XDG_RUNTIME_DIR");
    return !directory.isEmpty() && QFileInfo::exists(directory + QStringLiteral("/bus"));
}

QDBusConnection SessionBus::connection() {
    return isThere() ? QDBusConnection::sessionBus() : QDBusConnection(QString());
}
