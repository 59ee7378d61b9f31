#include "RequestLog.h"

#include <chrono>
#include <cstdio>
#include <optional>

namespace {

using Clock = std::chrono::steady_clock;

/// The library answers a request from its first to its last byte on one thread, and hands no place
/// to keep the time in. Absent for a request that could not be read at all.
thread_local std::optional<Clock::time_point> begun;

} // namespace

void RequestLog::begin() {
    begun = Clock::now();
}

void RequestLog::finish(const httplib::Request &request, const httplib::Response &response) {
    double milliseconds = 0;
    if (begun)
        milliseconds = std::chrono::duration<double, std::milli>(Clock::now() - *begun).count();
    begun.reset();
    // A body is held whole, comes from a provider that knows its length, or is a stream.
    const auto bytes = response.body.size() + response.content_length_;
    const auto size =
        response.is_chunked_content_provider_ ? "stream" : std::to_string(bytes) + " B";
    const auto path = request.target.substr(0, request.target.find('?'));
    std::fprintf(stderr, "%s %s %d %s %.1f ms\n", escaped(request.method).c_str(),
                 escaped(path).c_str(), response.status, size.c_str(), milliseconds);
}

std::string RequestLog::escaped(const std::string &text) {
    if (text.empty())
        return "-";
    std::string safe;
    for (const char letter : text) {
        if (letter > ' ' && letter < '\x7f' && letter != '\\') {
            safe += letter;
            continue;
        }
        constexpr auto digits = "0123456789abcdef";
        const auto byte = static_cast<unsigned char>(letter);
        safe += "\\x";
        safe += digits[byte >> 4];
        safe += digits[byte & 0xf];
    }
    return safe;
}
