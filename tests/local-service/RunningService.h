#pragma once

#include "SampleCases.h"
#include "Service.h"

#include "records/Catalogue.h"

#include <QStringList>
#include <QTemporaryDir>

#include <httplib.h>

/// A service with a home of its own, answering on a free port.
class RunningService final {
public:
    explicit RunningService(QList<QByteArray> dataSet = sampleCases());

    /// The reply to a GET; status 0 when there was none.
    httplib::Response get(const std::string &address);

    /// The body of a reply that must be a success.
    template <class Record>
    Record read(const std::string &address) {
        return Json::decode<Record>(body(address));
    }

    /// The keys of the cases that a search finds, without their archives, in order.
    QStringList search(const std::string &query);

    httplib::Client client() const { return httplib::Client("127.0.0.1", service.port()); }

private:
    QByteArray body(const std::string &address);

    QTemporaryDir m_home;

public:
    Service service;
};
