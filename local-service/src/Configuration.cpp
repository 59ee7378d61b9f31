#include "Configuration.h"

#include "records/JsonDecoder.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>

namespace {

struct WrittenModel {
    QString url;
    QString name;
    std::optional<QString> key;
};

struct WrittenConfiguration {
    std::optional<qint64> port;
    std::optional<WrittenModel> model;
};

} // namespace

template <>
struct JsonFields<WrittenModel> {
    static constexpr auto table = std::make_tuple(jsonField("url", &WrittenModel::url),
                                                  jsonField("name", &WrittenModel::name),
                                                  jsonField("key", &WrittenModel::key));
};

template <>
struct JsonFields<WrittenConfiguration> {
    static constexpr auto table = std::make_tuple(jsonField("port", &WrittenConfiguration::port),
                                                  jsonField("model", &WrittenConfiguration::model));
};

namespace {

constexpr qint64 greatestPort = 65535;

#ifdef CPPHTTPLIB_OPENSSL_SUPPORT
constexpr bool knowsHttps = true;
#else
constexpr bool knowsHttps = false;
#endif

int portOf(qint64 written) {
    if (written < 0 || written > greatestPort)
        throw ConfigurationError("\"port\" must be a number from 0 to 65535");
    return static_cast<int>(written);
}

bool isThisMachine(const QString &host) {
    return host == QLatin1String("localhost") || host == QLatin1String("127.0.0.1") ||
           host == QLatin1String("::1");
}

QUrl addressOf(const QString &written) {
    QUrl url(written, QUrl::StrictMode);
    const bool isHttps = url.scheme() == QLatin1String("https");
    if (isHttps && !knowsHttps)
        throw ConfigurationError("\"url\" of \"model\" must begin with http://, since the HTTP "
                                 "library of this build knows no https");
    const bool isWhole = url.isValid() && (isHttps || url.scheme() == QLatin1String("http")) &&
                         !url.host().isEmpty() && url.path().size() > 1;
    if (!isWhole || !url.userInfo().isEmpty() || url.hasFragment())
        throw ConfigurationError("\"url\" of \"model\" must be the whole address that takes chat "
                                 "completions, as in http://127.0.0.1:8080/v1/chat/completions, "
                                 "without a user and without \"#\"");
    return url;
}

QByteArray keyOf(const QString &written) {
    const bool fitsHeader =
        !written.isEmpty() && std::all_of(written.begin(), written.end(), [](QChar letter) {
            return letter > QLatin1Char(' ') && letter < QLatin1Char('\x7f');
        });
    if (!fitsHeader)
        throw ConfigurationError("\"key\" of \"model\" must be ASCII letters, digits and signs "
                                 "without blanks");
    return written.toLatin1();
}

/// `file` is where it is written.
ModelSettings modelOf(const WrittenModel &written, const QFile &file) {
    ModelSettings model;
    model.url = addressOf(written.url);
    model.name = written.name.trimmed();
    if (model.name.isEmpty())
        throw ConfigurationError("\"name\" of \"model\" must not be empty");
    if (!written.key)
        return model;
    model.key = keyOf(*written.key);
    if (model.url.scheme() == QLatin1String("http") && !isThisMachine(model.url.host()))
        throw ConfigurationError("the \"key\" of \"model\" goes to another machine by https only");
    constexpr auto others =
        QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
    if (file.permissions() & others)
        throw ConfigurationError("it holds the \"key\" of \"model\", and others may read it; give "
                                 "it the mode 0600");
    return model;
}

Configuration decode(QFile &file) {
    WrittenConfiguration written;
    try {
        written = Json::decode<WrittenConfiguration>(file.readAll());
    } catch (const DecodingError &error) {
        throw ConfigurationError(std::string("this is not a configuration: ") + error.what());
    }
    Configuration configuration;
    if (written.port)
        configuration.port = portOf(*written.port);
    if (written.model)
        configuration.model = modelOf(*written.model, file);
    return configuration;
}

} // namespace

Configuration Configuration::read(const QString &path) {
    if (!QFileInfo::exists(path))
        return {};
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw ConfigurationError("Cannot read " + path.toStdString() + ".");
    try {
        return decode(file);
    } catch (const ConfigurationError &error) {
        throw ConfigurationError(path.toStdString() + ": " + error.what() + ".");
    }
}
