#pragma once

#include "RequestError.h"

#include <httplib.h>

#include <optional>

/// The door of the service: what is turned away before anything is looked at.
namespace RequestGuard {

inline constexpr std::size_t greatestBody = 8 * 1024 * 1024;

/// Why this request to the service on `port` is refused; absent for a request that may go on.
///
/// Any page that the user's browser shows can send requests to this machine. A page that has its
/// own name point here (rebinding) is known by the Host header; a page of another origin by the
/// Origin header, which a browser adds to every request that could change something.
std::optional<RequestError> refusal(const httplib::Request &request, int port);

} // namespace RequestGuard
