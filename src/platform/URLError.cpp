#include "platform/URLError.h"

namespace {

using Code = URLError::Code;

struct Words {
    const char *name;
    const char16_t *sentence;
};

Words words(Code code) {
    switch (code) {
    case Code::badURL:
        return {"badURL", u"That address cannot be used; check it, or start again."};
    case Code::badServerResponse:
        return {"badServerResponse", u"The service gave an unexpected answer; please try again."};
    case Code::timedOut:
        return {"timedOut", u"This took too long and was stopped; please try again."};
    case Code::cannotFindHost:
        return {"cannotFindHost",
                u"The service could not be found; check your connection and the service address."};
    case Code::cannotConnectToHost:
        return {"cannotConnectToHost",
                u"The service is not answering; check your connection, or try again later."};
    case Code::networkConnectionLost:
        return {"networkConnectionLost",
                u"The connection broke before the answer was complete; please try again."};
    case Code::notConnectedToInternet:
        return {"notConnectedToInternet",
                u"This computer is not connected to the internet; connect it and try again."};
    case Code::secureConnectionFailed:
        return {"secureConnectionFailed", u"A secure connection to the service could not be made; "
                                          u"check your network and try again."};
    case Code::serverCertificateUntrusted:
        return {"serverCertificateUntrusted", u"The service could not prove its identity; check "
                                              u"its address and the date on this computer."};
    case Code::dataLengthExceedsMaximum:
        return {"dataLengthExceedsMaximum",
                u"There was too much to send or receive at once; try again with less."};
    case Code::cannotCreateFile:
        return {"cannotCreateFile",
                u"This computer could not prepare what was needed; please try again."};
    case Code::cannotOpenFile:
        return {"cannotOpenFile",
                u"The page could not be opened; check that a web browser is set up and try again."};
    case Code::cannotLoadFromNetwork:
        return {"cannotLoadFromNetwork",
                u"The sign-in page could not be opened in the browser; please try again."};
    case Code::unknown:
        return {"unknown", u"This failed for an unknown reason; please try again."};
    }
    return words(Code::unknown);
}

} // namespace

QString URLError::name(Code code) {
    return QString::fromLatin1(words(code).name);
}

QString URLError::localizedDescription() const {
    return QString::fromUtf16(words(m_code).sentence);
}
