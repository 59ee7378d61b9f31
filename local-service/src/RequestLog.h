#pragma once

#include <httplib.h>

#include <string>

/// One line on standard error for each request: method, path, status, bytes and milliseconds.
/// Queries, headers and bodies are never written: they hold tokens and private texts.
namespace RequestLog {

/// Starts the clock for the request that this thread has begun to answer.
void begin();
void finish(const httplib::Request &request, const httplib::Response &response);

/// The text with everything but visible ASCII written as \xHH, so that no request can forge a line
/// or talk to a terminal.
std::string escaped(const std::string &text);

} // namespace RequestLog
