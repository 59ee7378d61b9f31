#pragma once

#include <exception>

/// The failure of an operation whose result is no longer wanted. Never shown to anybody.
class CancellationError final : public std::exception {
public:
    const char *what() const noexcept override { return "cancelled"; }
};
