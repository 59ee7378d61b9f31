#pragma once

#include <QByteArray>
#include <QString>

/// Secrets that the service makes up itself: login tokens and one-time codes.
namespace Secrets {

/// 64 lower-case hexadecimal characters from the system's random source.
QString make();

/// What is stored in a secret's place. Good for random secrets only: a password could be guessed
/// from it.
QByteArray digest(const QByteArray &secret);

} // namespace Secrets
