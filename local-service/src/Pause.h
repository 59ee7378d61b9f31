#pragma once

#include <chrono>
#include <functional>

/// Lets so much time pass on the calling thread.
using Pause = std::function<void(std::chrono::milliseconds)>;
