#pragma once

#include <QString>

#include <exception>

/// A failure between this machine and a service, or of a local file or address that was needed for
/// it. Failures that the service itself reports are not URL errors.
class URLError final : public std::exception {
public:
    enum class Code {
        badURL,
        badServerResponse,
        timedOut,
        cannotFindHost,
        cannotConnectToHost,
        networkConnectionLost,
        notConnectedToInternet,
        secureConnectionFailed,
        serverCertificateUntrusted,
        dataLengthExceedsMaximum,
        cannotCreateFile,
        cannotOpenFile,
        cannotLoadFromNetwork,
        unknown,
    };

    explicit URLError(Code code) : m_code(code) {}

    Code code() const { return m_code; }

    /// The code's name as written above; "urlError." followed by it is the copy key of its text.
    static QString name(Code code);

    /// The English sentence of the code. Our own words: the toolkit's contain addresses.
    QString localizedDescription() const;

    const char *what() const noexcept override { return "URLError"; }

private:
    Code m_code;
};
