#include "Call.h"

#include <QCryptographicHash>

#include <algorithm>

Call::Call(const httplib::Request &request, httplib::Response &response, QStringList arguments)
    : m_request(request), m_response(response), m_arguments(std::move(arguments)) {}

QString Call::parameter(const char *name) const {
    return QString::fromStdString(m_request.get_param_value(name));
}

std::optional<qint64> Call::wholeNumber(const char *name, qint64 least, qint64 greatest) const {
    const QString text = parameter(name);
    if (text.isEmpty())
        return std::nullopt;
    const bool digits = std::all_of(text.begin(), text.end(), [](QChar letter) {
        return letter >= QLatin1Char('0') && letter <= QLatin1Char('9');
    });
    bool inRange = false;
    const qint64 number = text.toLongLong(&inRange);
    if (!digits || !inRange || number < least || number > greatest)
        throw RequestError::badParameter(
            QLatin1String(name),
            QStringLiteral("a whole number from %1 to %2").arg(least).arg(greatest));
    return number;
}

QByteArray Call::bearerToken() const {
    constexpr std::string_view scheme = "Bearer ";
    const auto value = m_request.get_header_value("Authorization");
    if (!std::string_view(value).starts_with(scheme))
        return {};
    return QByteArray::fromStdString(value.substr(scheme.size()));
}

void Call::checkBodySize(std::size_t limit) const {
    if (m_request.body.size() > limit)
        throw RequestError(413, QStringLiteral("body_too_large"),
                           QStringLiteral("The body of the request is larger than %1 bytes.")
                               .arg(qulonglong(limit)));
}

void Call::replyPage(const QByteArray &html, const QByteArray &style) {
    m_response.set_header("Referrer-Policy", "no-referrer");
    sendPage(200, html, style, "'none'");
}

void Call::replyForm(int status, const QByteArray &html, const QByteArray &style,
                     const QByteArray &targets) {
    // With "no-referrer" a browser would hide the origin of what the form sends, and the service
    // would refuse it.
    m_response.set_header("Referrer-Policy", "same-origin");
    m_response.set_header("Cache-Control", "no-store");
    sendPage(status, html, style, targets);
}

void Call::redirect(const QByteArray &address) {
    m_response.set_header("Location", address.toStdString());
    m_response.set_header("Referrer-Policy", "no-referrer");
    m_response.set_header("Cache-Control", "no-store");
    Reply::send(m_response, 303, "text/plain", "This page leads elsewhere.\n");
}

void Call::sendPage(int status, const QByteArray &html, const QByteArray &style,
                    const QByteArray &formTargets) {
    const auto styleHash = QCryptographicHash::hash(style, QCryptographicHash::Sha256).toBase64();
    const auto policy = "default-src 'none'; base-uri 'none'; form-action " + formTargets +
                        "; frame-ancestors 'none'; style-src 'sha256-" + styleHash + "'";
    m_response.set_header("Content-Security-Policy", policy.toStdString());
    Reply::send(m_response, status, "text/html; charset=utf-8", html);
}
