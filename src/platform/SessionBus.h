#pragma once

#include <QDBusConnection>

/// The message bus of the user's session.
namespace SessionBus {

/// Whether there is one to connect to. The libraries, asked for a connection where there is none,
/// would copy this process in order to start a bus of their own.
bool isThere();

/// The connection of the process; one that is not connected where there is no bus.
QDBusConnection connection();

} // namespace SessionBus
