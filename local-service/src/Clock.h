#pragma once

#include <QtGlobal>

#include <functional>

/// Gives the present moment in milliseconds since 1970-01-01T00:00:00 UTC. Called on any thread.
using Clock = std::function<qint64()>;
