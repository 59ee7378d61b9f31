#include "Configuration.h"

#include "records/JsonDecoder.h"

#include <QFile>
#include <QFileInfo>

#include <optional>

namespace {

struct WrittenConfiguration {
    std::optional<qint64> port;
};

constexpr qint64 greatestPort = 65535;

} // namespace

template <>
struct JsonFields<WrittenConfiguration> {
    static constexpr auto table = std::make_tuple(jsonField("port", &WrittenConfiguration::port));
};

Configuration Configuration::read(const QString &path) {
    Configuration configuration;
    if (!QFileInfo::exists(path))
        return configuration;

    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw ConfigurationError("Cannot read " + path.toStdString() + ".");
    WrittenConfiguration written;
    try {
        written = Json::decode<WrittenConfiguration>(file.readAll());
    } catch (const DecodingError &error) {
        throw ConfigurationError(path.toStdString() + " is not a configuration: " + error.what() +
                                 ".");
    }
    if (!written.port)
        return configuration;
    if (*written.port < 0 || *written.port > greatestPort)
        throw ConfigurationError(path.toStdString() +
                                 ": \"port\" must be a number from 0 to 65535.");
    configuration.port = static_cast<int>(*written.port);
    return configuration;
}
