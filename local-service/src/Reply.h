#pragma once

#include "RequestError.h"

#include <QByteArray>

#include <functional>
#include <httplib.h>
#include <optional>

/// How replies leave the service.
namespace Reply {

enum class Connection {
    Keep,
    /// For a request whose body was not read: what is left of it must never be taken for the next
    /// request, which might pass as one from a trusted page.
    Close,
};

/// `body` is never empty: the library would leave out its length, and the client wait for an end.
void send(httplib::Response &response, int status, const char *contentType, const QByteArray &body,
          Connection connection = Connection::Keep);

/// The header that an error brings with it, whatever form the reply takes.
void setHeader(httplib::Response &response, const RequestError &error);

/// Sends each piece as it is made, until there is none left or the client has gone. `next` is
/// called on the thread of the request and may take its time; an empty piece stands for none yet,
/// and lets a client that has gone be noticed.
void stream(httplib::Response &response, const char *contentType,
            std::function<std::optional<QByteArray>()> next);

void sendError(httplib::Response &response, const RequestError &error, Connection connection);

} // namespace Reply
