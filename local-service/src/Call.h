#pragma once

#include "Reply.h"

#include "records/Json.h"

#include <QString>
#include <QStringList>

#include <optional>

/// One request in the hands of its handler: what was asked, and where the answer goes.
class Call final {
public:
    /// In bytes; ample for everything that people type.
    static constexpr std::size_t defaultBodyLimit = 64 * 1024;

    Call(const httplib::Request &request, httplib::Response &response, QStringList arguments);

    /// What stands in the place of a placeholder of the route, counted from 0.
    const QString &argument(qsizetype index) const { return m_arguments[index]; }
    /// A value of the query or of a form; empty when absent.
    QString parameter(const char *name) const;
    /// A value of the query that is a whole number, absent when empty. Throws RequestError.
    std::optional<qint64> wholeNumber(const char *name, qint64 least, qint64 greatest) const;

    /// The token that came with the request; empty without one.
    QByteArray bearerToken() const;
    /// The record that the request holds. Throws RequestError, also for a body of more bytes than
    /// `limit`.
    template <class Record>
    Record body(std::size_t limit = defaultBodyLimit) const {
        checkBodySize(limit);
        try {
            return Json::decode<Record>(QByteArray::fromStdString(m_request.body));
        } catch (const DecodingError &error) {
            throw RequestError(400, QStringLiteral("bad_request"),
                               QStringLiteral("The service cannot understand this request: %1.")
                                   .arg(QLatin1String(error.what())));
        }
    }

    template <class Record>
    void reply(const Record &record) {
        m_response.set_header("Cache-Control", "no-store");
        Reply::send(m_response, 200, "application/json", Json::encode(record));
    }
    /// A page for the browser that may load nothing and run nothing, with the one style of this
    /// text.
    void replyPage(const QByteArray &html, const QByteArray &style);
    /// A page that holds a form besides. `targets` are the sources to which the form may lead.
    void replyForm(int status, const QByteArray &html, const QByteArray &style,
                   const QByteArray &targets = "'self'");

    /// Sends the browser on to an address, by a GET.
    void redirect(const QByteArray &address);

    const httplib::Request &request() const { return m_request; }
    httplib::Response &response() { return m_response; }

private:
    void checkBodySize(std::size_t limit) const;
    void sendPage(int status, const QByteArray &html, const QByteArray &style,
                  const QByteArray &formTargets);

    const httplib::Request &m_request;
    httplib::Response &m_response;
    QStringList m_arguments;
};
