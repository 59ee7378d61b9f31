#pragma once

#include <QString>

#include <optional>

class CredentialStore;

/// The login token of the service, at most one for each server address, in the system's credential
/// store and nowhere else. An address is the text as it was written: two forms of one address are
/// two items.
namespace TokenVault {

/// The service name of the items: the program's identity.
QString service();

/// Every failure is an absent token.
std::optional<QString> read(CredentialStore &credentials, const QString &server);

/// Replaces the token, or removes it. Throws ServiceError; a token that could not be stored leaves
/// none behind.
void set(CredentialStore &credentials, const std::optional<QString> &token, const QString &server);

} // namespace TokenVault
