#pragma once

#include "platform/Task.h"

#include <functional>

class QObject;

/// Runs an operation that nobody waits for. Its first step is taken in the next turn of the event
/// loop, so that the caller's own effects come first. A cancellation ends it silently; any other
/// exception is a fault of the program, since operations word their failures themselves: it is
/// reported on standard error and the program goes on.
///
/// `operation` makes the task; it must not be a coroutine itself.
void start(std::function<Task<void>()> operation);

/// The same, but nothing runs when the owner is gone by then.
void start(QObject &owner, std::function<Task<void>()> operation);
