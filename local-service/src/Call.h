#pragma once

#include "Reply.h"

#include "records/Json.h"

#include <QString>
#include <QStringList>

#include <optional>

/// One request in the hands of its handler: what was asked, and where the answer goes.
class Call final {
public:
    Call(const httplib::Request &request, httplib::Response &response, QStringList arguments);

    /// What stands in the place of a placeholder of the route, counted from 0.
    const QString &argument(qsizetype index) const { return m_arguments[index]; }
    /// A value of the query; empty when absent.
    QString parameter(const char *name) const;
    /// A value of the query that is a whole number, absent when empty. Throws RequestError.
    std::optional<qint64> wholeNumber(const char *name, qint64 least, qint64 greatest) const;

    template <class Record>
    void reply(const Record &record) {
        Reply::send(m_response, 200, "application/json", Json::encode(record));
    }
    /// A page for the browser that may load nothing and run nothing, with the one style of this
    /// text.
    void replyPage(const QByteArray &html, const QByteArray &style);

    const httplib::Request &request() const { return m_request; }
    httplib::Response &response() { return m_response; }

private:
    const httplib::Request &m_request;
    httplib::Response &m_response;
    QStringList m_arguments;
};
