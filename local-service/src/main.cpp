#include "CaseData.h"
#include "Configuration.h"
#include "Service.h"

#include <QStandardPaths>

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {

constexpr int exitBadConfiguration = 2;

QString directory(QStandardPaths::StandardLocation location) {
    return QStandardPaths::writableLocation(location) + QStringLiteral("/quillmere-service");
}

/// The signals that end the service. They are blocked before the first thread starts, so that none
/// of them interrupts anything and one place waits for them.
sigset_t blockEndSignals() {
    sigset_t signals;
    sigemptyset(&signals);
    sigaddset(&signals, SIGINT);
    sigaddset(&signals, SIGTERM);
    pthread_sigmask(SIG_BLOCK, &signals, nullptr);
    return signals;
}

void run(const Configuration &configuration) {
    const sigset_t endSignals = blockEndSignals();
    ServiceOptions options;
    options.dataDirectory = directory(QStandardPaths::GenericDataLocation);
    options.port = configuration.port;
    options.dataSet = CaseData::embedded();
    options.model = configuration.model;
    Service service(std::move(options));
    service.start();
    std::fprintf(stderr, "Quillmere service on http://127.0.0.1:%d\n", service.port());
    int signal = 0;
    sigwait(&endSignals, &signal);
    service.stop();
}

} // namespace

int main() {
    try {
        run(Configuration::read(directory(QStandardPaths::GenericConfigLocation) +
                                QStringLiteral("/service.json")));
        return EXIT_SUCCESS;
    } catch (const ConfigurationError &error) {
        std::fprintf(stderr, "The Quillmere service cannot start: %s\n", error.what());
        return exitBadConfiguration;
    } catch (const std::exception &error) {
        std::fprintf(stderr, "The Quillmere service cannot start: %s\n", error.what());
        return EXIT_FAILURE;
    }
}
