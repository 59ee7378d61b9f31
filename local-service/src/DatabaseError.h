#pragma once

#include <stdexcept>

/// The database cannot be used as it stands. The text is a sentence for whoever runs the service.
class DatabaseError final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};
