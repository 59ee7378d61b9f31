#include "Service.h"

#include "AccountRoutes.h"
#include "Answerer.h"
#include "BrowserRoutes.h"
#include "CaseImport.h"
#include "CaseStore.h"
#include "CatalogueRoutes.h"
#include "ChatRoutes.h"
#include "Database.h"
#include "LibraryRoutes.h"
#include "ModelWriter.h"
#include "PreviewWriter.h"
#include "RegisterRoutes.h"
#include "RequestGuard.h"
#include "RequestLog.h"
#include "Schema.h"
#include "SignIn.h"
#include "SignInCodes.h"
#include "WallRoutes.h"

#include <chrono>
#include <cstdio>

namespace {

constexpr auto address = "127.0.0.1";

/// An open connection holds a thread even while it is silent, and one client may keep six of them.
constexpr std::size_t threadCount = 16;
constexpr int waitingConnections = 128;
/// How long a silent connection is kept, and thus how long the end of the service can take.
constexpr auto keepAliveSeconds = 2;
constexpr std::size_t requestsOfOneConnection = 1000;
constexpr auto readTimeout = std::chrono::seconds(5);
constexpr auto writeTimeout = std::chrono::seconds(5);

RequestError internalError() {
    return {500, QStringLiteral("internal"), QStringLiteral("The service failed to answer.")};
}

/// For requests that the library itself turns away.
RequestError unreadable(int status) {
    return {status, QStringLiteral("bad_request"),
            QStringLiteral("The service cannot read this request.")};
}

void reportFailure(const httplib::Request &request, const char *what) {
    std::fprintf(stderr, "%s failed: %s\n", RequestLog::escaped(request.path).c_str(), what);
}

} // namespace

Service::Service(ServiceOptions options) : m_options(std::move(options)) {
    setUpServer();
}

Service::~Service() {
    stop();
}

void Service::setUpServer() {
    m_server.new_task_queue = [] { return new httplib::ThreadPool(threadCount); };
    m_server.set_keep_alive_timeout(keepAliveSeconds);
    m_server.set_keep_alive_max_count(requestsOfOneConnection);
    m_server.set_read_timeout(readTimeout);
    m_server.set_write_timeout(writeTimeout);
    m_server.set_payload_max_length(RequestGuard::greatestBody);
    // Head and body leave in two writes; without this the second waits for the client's delayed
    // word on the first.
    m_server.set_tcp_nodelay(true);
    // The library's own choice would let a second service share the port.
    m_server.set_socket_options([this](socket_t socket) {
        m_listener = socket;
        const int yes = 1;
        setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof yes);
    });

    m_server.set_pre_routing_handler(
        [this](const httplib::Request &request, httplib::Response &response) {
            return receive(request, response);
        });
    m_server.Post("/.*", [this](const httplib::Request &request, httplib::Response &response) {
        answer(request, response);
    });
    m_server.set_error_handler([](const httplib::Request &, httplib::Response &response) {
        if (!response.has_header("Content-Type"))
            Reply::sendError(response, unreadable(response.status), Reply::Connection::Close);
    });
    m_server.set_logger(RequestLog::finish);
}

void Service::start() {
    // In this order nothing is written while another service, perhaps an older one, holds the port.
    m_database = std::make_unique<Database>(m_options.dataDirectory);
    bindPort();
    Schema::migrate(*m_database);
    openCollection();
    openAccounts();
    openQuestions();
    m_options.dataSet.clear();

    m_listening = std::async(std::launch::async, [this] { return m_server.listen_after_bind(); });
    using namespace std::chrono_literals;
    while (!m_server.is_running() && m_listening.wait_for(1ms) != std::future_status::ready) {
    }
}

void Service::bindPort() {
    if (m_options.port == 0)
        m_port = m_server.bind_to_any_port(address);
    else
        m_port = m_server.bind_to_port(address, m_options.port) ? m_options.port : -1;
    if (m_port < 0)
        throw std::runtime_error("Port " + std::to_string(m_options.port) + " of " + address +
                                 " is taken or may not be used. Is the service running already?");
    // The library lets only five wait. The sixth of a burst would try again after a whole second.
    ::listen(m_listener, waitingConnections);
}

void Service::openCollection() {
    CaseImport::run(*m_database, m_options.dataSet);
    m_cases = std::make_unique<CaseStore>(*m_database);
    CatalogueRoutes::add(m_router, *m_cases, origin());
}

QString Service::origin() const {
    return QStringLiteral("http://%1:%2").arg(QLatin1String(address)).arg(m_port);
}

void Service::openAccounts() {
    m_signIn = std::make_unique<SignIn>(*m_database, m_options.clock);
    m_signInCodes = std::make_unique<SignInCodes>();
    AccountRoutes::add(m_router, *m_database, *m_signIn, m_options.clock);
    RegisterRoutes::add(m_router, *m_signIn);
    BrowserRoutes::add(m_router, *m_signIn, *m_signInCodes, m_options.clock);
    LibraryRoutes::add(m_router, *m_database);
    WallRoutes::add(m_router, *m_database, *m_cases, origin(), m_options.clock);
}

void Service::openQuestions() {
    QList<CaseData::File> files;
    for (const QByteArray &text : std::as_const(m_options.dataSet))
        files.append(CaseData::decode(text));
    m_answerer = std::make_unique<Answerer>(files);
    m_preview = std::make_unique<PreviewWriter>(m_answerer->words(), m_options.pause);
    if (m_options.model)
        m_modelWriter = std::make_unique<ModelWriter>(*m_options.model, *m_answerer, *m_preview);
    ChatRoutes::add(m_router, *m_answerer, m_modelWriter ? *m_modelWriter : *m_preview, *m_database,
                    m_options.clock);
}

void Service::stop() {
    m_server.stop();
    if (m_listening.valid())
        m_listening.wait();
}

httplib::Server::HandlerResponse Service::receive(const httplib::Request &request,
                                                  httplib::Response &response) const {
    using enum httplib::Server::HandlerResponse;
    RequestLog::begin();
    try {
        if (const auto refusal = RequestGuard::refusal(request, m_port))
            throw *refusal;
        m_router.find(request.method, request.path);
    } catch (const RequestError &error) {
        Reply::sendError(response, error, Reply::Connection::Close);
        return Handled;
    }
    // The library reads the body and comes back through its own route.
    if (request.method == "POST")
        return Unhandled;
    answer(request, response);
    return Handled;
}

void Service::answer(const httplib::Request &request, httplib::Response &response) const {
    try {
        auto match = m_router.find(request.method, request.path);
        Call call(request, response, std::move(match.arguments));
        (*match.handler)(call);
    } catch (const RequestError &error) {
        Reply::sendError(response, error, Reply::Connection::Keep);
    } catch (const std::exception &error) {
        reportFailure(request, error.what());
        Reply::sendError(response, internalError(), Reply::Connection::Keep);
    }
}
