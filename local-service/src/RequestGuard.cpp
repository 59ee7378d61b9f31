#include "RequestGuard.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>

namespace {

/// Long enough for every address of the service, and short enough for the library's matching, which
/// goes one call deeper with each letter.
constexpr std::size_t longestPath = 1024;

std::optional<int> wholeNumber(std::string_view text) {
    int number = -1;
    const auto end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    if (result.ec != std::errc() || result.ptr != end || number < 0)
        return std::nullopt;
    return number;
}

/// Takes the name of this machine off the front of an authority; false when another stands there.
bool takeLocalName(std::string_view &authority) {
    for (const std::string_view name : {"127.0.0.1", "localhost", "[::1]"}) {
        const auto front = authority.substr(0, name.size());
        if (std::equal(front.begin(), front.end(), name.begin(), name.end(), [](char a, char b) {
                return (a >= 'A' && a <= 'Z' ? static_cast<char>(a + 'a' - 'A') : a) == b;
            })) {
            authority.remove_prefix(name.size());
            return true;
        }
    }
    return false;
}

/// The port that is left of an authority after its name; absent when something else stands there.
std::optional<int> takePort(std::string_view rest, int defaultPort) {
    if (rest.empty())
        return defaultPort;
    if (rest.front() != ':')
        return std::nullopt;
    return wholeNumber(rest.substr(1));
}

bool hasLocalHost(const httplib::Request &request) {
    if (request.get_header_value_count("Host") != 1)
        return false;
    const std::string value = request.get_header_value("Host");
    std::string_view host = value;
    return takeLocalName(host) && takePort(host, 80).has_value();
}

bool hasForeignOrigin(const httplib::Request &request, int port) {
    if (!request.has_header("Origin"))
        return false;
    const std::string value = request.get_header_value("Origin");
    std::string_view origin = value;
    constexpr std::string_view scheme = "http://";
    if (request.get_header_value_count("Origin") != 1 || origin.substr(0, scheme.size()) != scheme)
        return true;
    origin.remove_prefix(scheme.size());
    return !takeLocalName(origin) || takePort(origin, 80) != port;
}

bool onlyReads(const httplib::Request &request) {
    return request.method == "GET" || request.method == "HEAD";
}

RequestError badRequest(const QString &message) {
    return {400, QStringLiteral("bad_request"), message};
}

/// Whether the body can be read in a known and bearable number of bytes.
std::optional<RequestError> bodyRefusal(const httplib::Request &request) {
    const auto count = request.get_header_value_count("Content-Length");
    const auto length = wholeNumber(request.get_header_value("Content-Length"));
    const bool chunked = request.has_header("Transfer-Encoding");
    if (count > 1 || (count == 1 && chunked))
        return badRequest(QStringLiteral("The length of the body is not clear."));
    if (onlyReads(request)) {
        if (chunked || (count == 1 && length != 0))
            return badRequest(QStringLiteral("A request of this kind has no body."));
        return std::nullopt;
    }
    if (count == 0 && (chunked || request.method == "POST"))
        return RequestError(411, QStringLiteral("length_required"),
                            QStringLiteral("The request does not tell the length of its body."));
    // More digits than a number holds are too much as well.
    if (count == 1 && (!length || static_cast<std::size_t>(*length) > RequestGuard::greatestBody))
        return RequestError(413, QStringLiteral("body_too_large"),
                            QStringLiteral("The body of the request is too large."));
    return std::nullopt;
}

} // namespace

std::optional<RequestError> RequestGuard::refusal(const httplib::Request &request, int port) {
    if (!hasLocalHost(request))
        return RequestError(403, QStringLiteral("forbidden_host"),
                            QStringLiteral("This service answers on its own machine only."));
    if (!onlyReads(request) && hasForeignOrigin(request, port))
        return RequestError(403, QStringLiteral("forbidden_origin"),
                            QStringLiteral("This service takes nothing from other sites."));
    if (request.path.size() > longestPath)
        return RequestError(414, QStringLiteral("address_too_long"),
                            QStringLiteral("The address is too long."));
    return bodyRefusal(request);
}
