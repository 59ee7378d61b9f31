#pragma once

#include <QByteArray>
#include <QString>

#include <chrono>
#include <exception>
#include <utility>

/// Why a request is refused. Becomes the status and the JSON body of the reply.
class RequestError final : public std::exception {
public:
    RequestError(int status, QString code, QString message);

    /// A parameter that cannot be understood; `rule` completes the sentence "... must be".
    static RequestError badParameter(const QString &name, const QString &rule);
    static RequestError notFound();
    static RequestError noSuchCase();
    /// `allowed` goes into the header of that name.
    static RequestError methodNotAllowed(QByteArray allowed);
    static RequestError tooManyAttempts(std::chrono::milliseconds wait);

    const char *what() const noexcept override { return "a refused request"; }

    int status() const { return m_status; }
    const QString &code() const { return m_code; }
    const QString &message() const { return m_message; }
    /// A header that the reply has besides, as name and value; an empty name means none.
    const std::pair<QByteArray, QByteArray> &header() const { return m_header; }

private:
    int m_status;
    QString m_code;
    QString m_message;
    std::pair<QByteArray, QByteArray> m_header;
};
