#include "Reply.h"

#include "records/JsonEncoder.h"

namespace {

struct ErrorBody {
    QString error;
    QString message;
};

} // namespace

template <>
struct JsonFields<ErrorBody> {
    static constexpr auto table = std::make_tuple(jsonField("error", &ErrorBody::error),
                                                  jsonField("message", &ErrorBody::message));
};

void Reply::send(httplib::Response &response, int status, const char *contentType,
                 const QByteArray &body, Connection connection) {
    // A success has no status yet: the library chooses between the whole and a range.
    if (status != 200)
        response.status = status;
    if (connection == Connection::Close)
        response.set_header("Connection", "close");
    response.set_header("X-Content-Type-Options", "nosniff");
    // A provider instead of a plain body, since the library compresses plain bodies, which costs
    // time and gains nothing on this machine. A provider that fails after its last byte closes the
    // connection, which is the only way to ask for it.
    response.set_content_provider(
        static_cast<std::size_t>(body.size()), contentType,
        [body, connection](std::size_t offset, std::size_t length, httplib::DataSink &sink) {
            const bool written = sink.write(body.constData() + offset, length);
            return written && connection == Connection::Keep;
        });
}

void Reply::stream(httplib::Response &response, const char *contentType,
                   std::function<std::optional<QByteArray>()> next) {
    response.set_header("X-Content-Type-Options", "nosniff");
    response.set_header("Cache-Control", "no-store");
    response.set_chunked_content_provider(
        contentType, [next = std::move(next)](std::size_t, httplib::DataSink &sink) {
            const auto piece = next();
            if (!piece)
                sink.done();
            else if (!sink.is_writable())
                return false;
            else if (!piece->isEmpty())
                sink.write(piece->constData(), static_cast<std::size_t>(piece->size()));
            return true;
        });
}

void Reply::setHeader(httplib::Response &response, const RequestError &error) {
    if (const auto &[name, value] = error.header(); !name.isEmpty())
        response.set_header(name.constData(), value.toStdString());
}

void Reply::sendError(httplib::Response &response, const RequestError &error,
                      Connection connection) {
    setHeader(response, error);
    const auto body = Json::encode(ErrorBody{error.code(), error.message()});
    send(response, error.status(), "application/json", body, connection);
}
