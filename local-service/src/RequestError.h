#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

/// Why a request is refused. Becomes the status and the JSON body of the reply.
class RequestError final : public std::exception {
public:
    RequestError(int status, QString code, QString message);

    /// A parameter that cannot be understood; `rule` completes the sentence "... must be".
    static RequestError badParameter(const QString &name, const QString &rule);
    static RequestError notFound();
    /// `allowed` goes into the header of that name.
    static RequestError methodNotAllowed(QByteArray allowed);

    const char *what() const noexcept override { return "a refused request"; }

    int status() const { return m_status; }
    const QString &code() const { return m_code; }
    const QString &message() const { return m_message; }
    const QByteArray &allowedMethods() const { return m_allowedMethods; }

private:
    int m_status;
    QString m_code;
    QString m_message;
    QByteArray m_allowedMethods;
};
