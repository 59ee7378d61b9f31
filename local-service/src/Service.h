#pragma once

#include "Clock.h"
#include "ModelSettings.h"
#include "Pause.h"
#include "Router.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

#include <future>
#include <memory>
#include <optional>
#include <thread>

class AnswerWriter;
class Answerer;
class CaseStore;
class Database;
class SignIn;
class SignInCodes;

struct ServiceOptions {
    QString dataDirectory;
    /// 0 stands for any free port.
    int port = 0;
    /// The texts of the archives' data files.
    QList<QByteArray> dataSet;
    Clock clock = QDateTime::currentMSecsSinceEpoch;
    /// Between the pieces of an answer.
    Pause pause = [](std::chrono::milliseconds time) { std::this_thread::sleep_for(time); };
    /// Writes the answers; without it they are put together from the cases' own sentences.
    std::optional<ModelSettings> model = std::nullopt;
};

/// The service: database, routes and the HTTP server on 127.0.0.1. It may be started once.
class Service final {
public:
    explicit Service(ServiceOptions options);
    ~Service();
    Service(const Service &) = delete;
    Service &operator=(const Service &) = delete;

    /// Routes of further subjects are added here before the start.
    Router &router() { return m_router; }

    /// Returns once requests are answered. Throws a standard exception whose text says what is in
    /// the way.
    void start();
    /// Lets the running requests end, and returns when the last has.
    void stop();
    /// The port in use, from the start on.
    int port() const { return m_port; }

private:
    void setUpServer();
    void bindPort();
    void openCollection();
    void openAccounts();
    void openQuestions();
    /// The service's own address, from the binding of the port on.
    QString origin() const;
    httplib::Server::HandlerResponse receive(const httplib::Request &request,
                                             httplib::Response &response) const;
    void answer(const httplib::Request &request, httplib::Response &response) const;

    ServiceOptions m_options;
    Router m_router;
    int m_port = 0;
    std::unique_ptr<Database> m_database;
    std::unique_ptr<CaseStore> m_cases;
    std::unique_ptr<SignIn> m_signIn;
    std::unique_ptr<Answerer> m_answerer;
    std::unique_ptr<AnswerWriter> m_preview;
    std::unique_ptr<AnswerWriter> m_modelWriter;
    std::unique_ptr<SignInCodes> m_signInCodes;
    httplib::Server m_server;
    socket_t m_listener = -1;
    std::future<bool> m_listening;
};
