#include "RequestError.h"

RequestError::RequestError(int status, QString code, QString message)
    : m_status(status), m_code(std::move(code)), m_message(std::move(message)) {}

RequestError RequestError::badParameter(const QString &name, const QString &rule) {
    return {400, QStringLiteral("bad_request"),
            QStringLiteral("The parameter \"%1\" must be %2.").arg(name, rule)};
}

RequestError RequestError::notFound() {
    return {404, QStringLiteral("not_found"), QStringLiteral("There is nothing at this address.")};
}

RequestError RequestError::noSuchCase() {
    return {404, QStringLiteral("case_not_found"), QStringLiteral("There is no such case.")};
}

RequestError RequestError::methodNotAllowed(QByteArray allowed) {
    RequestError error(405, QStringLiteral("method_not_allowed"),
                       QStringLiteral("This address does not take requests of that kind."));
    error.m_header = {"Allow", std::move(allowed)};
    return error;
}

RequestError RequestError::tooManyAttempts(std::chrono::milliseconds wait) {
    const auto seconds = std::chrono::ceil<std::chrono::seconds>(wait).count();
    const auto minutes = std::chrono::ceil<std::chrono::minutes>(wait).count();
    const auto when =
        minutes == 1 ? QStringLiteral("a minute") : QStringLiteral("%1 minutes").arg(minutes);
    RequestError error(429, QStringLiteral("too_many_attempts"),
                       QStringLiteral("Too many attempts have failed. Try again in %1.").arg(when));
    error.m_header = {"Retry-After", QByteArray::number(qint64(seconds))};
    return error;
}
