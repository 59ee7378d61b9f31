// The one request that carries the library both ways.
#include "platform/Worker.h"
#include "service/API.h"
#include "service/Endpoints.h"
#include "service/ServiceError.h"

namespace {

ServiceError tooLarge() {
    ServiceError error;
    error.error = QStringLiteral("library_too_large");
    error.message =
        QStringLiteral("This upload is too large. Your changes remain saved on this Mac.");
    return error;
}

} // namespace

Task<LibraryReply> API::syncLibrary(API api, QList<LibraryChange> changes, std::stop_token stop) {
    // On a worker: a batch of long conversations may be much larger than what is ever sent.
    auto encoding =
        onWorker([upload = LibraryUpload{changes}] { return Json::encode(upload); }, stop);
    QByteArray body = co_await encoding;
    if (body.size() > largestUpload)
        throw tooLarge();
    auto sending =
        successfulBody(*api.m_transport, api.request(Endpoint::library, "POST", {}, body), stop);
    QByteArray text = co_await sending;
    auto decoding = onWorker(
        [text = std::move(text)]() mutable { return Json::decode<LibraryReply>(std::move(text)); },
        stop);
    LibraryReply reply = co_await decoding;
    co_return std::move(reply);
}
