#include "storage/TokenVault.h"

#include "BuildSettings.h"
#include "platform/CredentialStore.h"
#include "service/ServiceError.h"

#include <QStringDecoder>

namespace {

using Outcome = CredentialStore::Outcome;

ServiceError failure(const QString &message) {
    ServiceError error;
    error.error = QStringLiteral("keychain");
    error.message = message;
    return error;
}

std::optional<QString> textOf(const QByteArray &bytes) {
    QStringDecoder decoder(QStringDecoder::Utf8, QStringDecoder::Flag::Stateless |
                                                     QStringDecoder::Flag::ConvertInitialBom);
    const QString text = decoder(bytes);
    if (decoder.hasError())
        return std::nullopt;
    return text;
}

} // namespace

QString TokenVault::service() {
    static const QString name = *BuildSettings::bundleId
                                    ? QString(QLatin1String(BuildSettings::bundleId))
                                    : QStringLiteral("chat.quillmere.mac.local");
    return name;
}

std::optional<QString> TokenVault::read(CredentialStore &credentials, const QString &server) {
    const auto bytes = credentials.find(service(), server);
    return bytes ? textOf(*bytes) : std::nullopt;
}

void TokenVault::set(CredentialStore &credentials, const std::optional<QString> &token,
                     const QString &server) {
    if (credentials.remove(service(), server) == Outcome::failed)
        throw failure(QStringLiteral("Could not update the saved login."));
    if (!token)
        return;
    if (credentials.add(service(), server, token->toUtf8()) != Outcome::done)
        throw failure(QStringLiteral("Could not save the login securely."));
}
