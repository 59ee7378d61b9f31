#pragma once

#include "platform/Task.h"

#include <QString>

class Files;
class RunningInstance;
class WindowOpener;

/// How a process of the program begins: with its first window, or, where another process runs
/// already, by telling that one and ending.
namespace Launch {

/// The desktop's permission for this process to come to the front, if it gave one. To be read
/// before the toolkit takes it.
QString activationToken();

/// The first window. Ends the program when there is none to open; the exit code then tells whether
/// another process has taken over. Runs inside the event loop.
[[nodiscard]] Task<void> openWindow(RunningInstance *instance, WindowOpener *windows, Files *files,
                                    QString activationToken);

} // namespace Launch
