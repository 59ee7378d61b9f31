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

void Call::replyPage(const QByteArray &html, const QByteArray &style) {
    const auto styleHash = QCryptographicHash::hash(style, QCryptographicHash::Sha256).toBase64();
    const auto policy = "default-src 'none'; base-uri 'none'; form-action 'none'; "
                        "frame-ancestors 'none'; style-src 'sha256-" +
                        styleHash + "'";
    m_response.set_header("Content-Security-Policy", policy.toStdString());
    m_response.set_header("Referrer-Policy", "no-referrer");
    Reply::send(m_response, 200, "text/html; charset=utf-8", html);
}
