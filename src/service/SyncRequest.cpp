// The one request that carries the library both ways.
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
    QFuture<QByteArray> encoding =
        QtConcurrent::run([upload = LibraryUpload{changes}] { return Json::encode(upload); });
    QByteArray body = co_await encoding;
    if (stop.stop_requested())
        throw CancellationError();
    if (body.size() > largestUpload)
        throw tooLarge();
    auto calling =
        api.call<LibraryReply>(api.request(Endpoint::library, "POST", {}, body), std::move(stop));
    LibraryReply reply = co_await calling;
    co_return reply;
}
