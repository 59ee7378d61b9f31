#pragma once

#include <QString>
#include <QUrl>

#include <optional>

/// The pages of the membership, which open behind an address that works once.
namespace MembershipSession {

/// Accepts nothing but such an address of the account origin: it carries a code, and it leaves the
/// program.
std::optional<QUrl> validURL(const QString &text);

} // namespace MembershipSession
