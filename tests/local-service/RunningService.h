#pragma once

#include "SampleCases.h"
#include "Service.h"

#include "records/Account.h"
#include "records/Catalogue.h"

#include <QStringList>
#include <QTemporaryDir>

#include <atomic>
#include <httplib.h>

/// A service with a home of its own, answering on a free port.
class RunningService final {
public:
    /// What the service takes for the present moment: noon of a day in January, UTC.
    std::atomic<qint64> now = 1'800'014'400'000;

    /// Answers come without a pause unless one is given.
    explicit RunningService(
        QList<QByteArray> dataSet = sampleCases(), Pause pause = [](std::chrono::milliseconds) {},
        std::optional<ModelSettings> model = std::nullopt);

    /// The reply to a GET; status 0 when there was none.
    httplib::Response get(const std::string &address);

    /// The reply to a POST of this JSON, or to a GET without it; status 0 when there was none.
    /// `token` is the login's, if any.
    httplib::Response ask(const std::string &address, const QByteArray &json,
                          const QString &token = {});

    /// The body of a reply that must be a success.
    template <class Record>
    Record read(const std::string &address) {
        return Json::decode<Record>(success(address, get(address)));
    }

    template <class Record>
    Record ask(const std::string &address, const QByteArray &json, const QString &token) {
        return Json::decode<Record>(success(address, ask(address, json, token)));
    }

    /// Makes an account by the web page. Its password is `password`.
    httplib::Response registerAccount(const std::string &handle);
    Login signIn(const std::string &handle);
    /// Makes an account and signs in to it.
    Login join(const std::string &handle);

    static constexpr auto password = "correct horse";

    /// The keys of the cases that a search finds, without their archives, in order.
    QStringList search(const std::string &query);

    /// The directory of the database. A test may open it beside the service.
    QString home() const { return m_home.filePath(QStringLiteral("service")); }

    /// Waits long for its replies: a password's hash takes seconds on a busy machine.
    httplib::Client client() const;

private:
    static QByteArray success(const std::string &address, const httplib::Response &response);

    QTemporaryDir m_home;

public:
    Service service;
};
