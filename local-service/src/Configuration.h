#pragma once

#include "ModelSettings.h"

#include <QString>

#include <optional>
#include <stdexcept>

/// The configuration file cannot be read as one. The text is a sentence for whoever runs the
/// service; it never holds any of what is written in the file.
class ConfigurationError final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What a user may set in the file service.json.
struct Configuration {
    /// 0 stands for any free port.
    int port = 4310;
    std::optional<ModelSettings> model;

    /// The defaults where there is no file. Throws ConfigurationError.
    static Configuration read(const QString &path);
};
