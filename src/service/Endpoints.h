#pragma once

#include <QLatin1String>
#include <QString>

/// Every path of the service, relative to the base address.
namespace Endpoint {

inline constexpr QLatin1String health("v1/health");
inline constexpr QLatin1String archives("v1/archives");
inline constexpr QLatin1String search("v1/search");
inline constexpr QLatin1String facets("v1/facets");
inline constexpr QLatin1String categories("v1/categories");

/// One case: `v1/cases/<archive>/<id>`.
inline QString caseEntry(const QString &archive, const QString &id) {
    return QLatin1String("v1/cases/") + archive + QLatin1Char('/') + id;
}

inline constexpr QLatin1String chatRuns("v1/chat/runs");
inline constexpr QLatin1String library("v1/library");
inline constexpr QLatin1String me("v1/account/me");
inline constexpr QLatin1String login("v1/account/login");
inline constexpr QLatin1String logout("v1/account/logout");
inline constexpr QLatin1String profile("v1/account/profile");
inline constexpr QLatin1String webSession("v1/account/web-session");
inline constexpr QLatin1String quota("v1/account/quota");
inline constexpr QLatin1String requestCases("v1/account/request-cases");
inline constexpr QLatin1String wall("v1/wall");
inline constexpr QLatin1String wallCase("v1/wall/case");
inline constexpr QLatin1String wallChat("v1/wall/chat");

/// On the public site, whatever service is set.
inline constexpr QLatin1String downloads("v1/downloads");

/// On the account origin.
inline constexpr QLatin1String googleStart("google/native/start");
inline constexpr QLatin1String googleToken("google/native/token");
inline constexpr QLatin1String googleRegister("google/register");
inline constexpr QLatin1String googleWebSession("google/native/web-session");
inline constexpr QLatin1String account("account");

} // namespace Endpoint
