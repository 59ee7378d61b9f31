// Runs simulations with the seeds that are asked for: `simulation FIRST COUNT`.
#include "tests/simulation/Simulation.h"

#include "local-service/src/Schema.h"

#include <QCoreApplication>
#include <QHashSeed>

#include <cstdio>

namespace {

/// The accounts of so many seeds share a database before it is made anew.
constexpr int seedsForEachDatabase = 500;

/// So that a quiet simulation that tries nothing is seen for what it is.
struct Totals {
    int texts = 0;
    int owed = 0;
    int copies = 0;
};

bool runSeed(unsigned seed, Database &database, Totals &totals) {
    Simulation simulation(seed, database);
    const auto violation = simulation.run();
    totals.texts += simulation.ledger().saved();
    totals.owed += simulation.ledger().owed();
    totals.copies += simulation.copies();
    if (violation.isEmpty())
        return true;
    std::printf("seed %u: %s\n", seed, qPrintable(violation));
    for (const auto &event : simulation.trace())
        std::printf("    %s\n", qPrintable(event));
    std::fflush(stdout);
    return false;
}

} // namespace

int main(int count, char **arguments) {
    if (count != 3) {
        std::fprintf(stderr, "usage: simulation FIRST-SEED COUNT\n");
        return 2;
    }
    // The same course in each run of a seed.
    QHashSeed::setDeterministicGlobalSeed();
    QCoreApplication application(count, arguments);

    const unsigned first = QByteArray(arguments[1]).toUInt();
    const unsigned seeds = QByteArray(arguments[2]).toUInt();
    unsigned failed = 0;
    Totals totals;
    for (unsigned done = 0; done < seeds;) {
        QTemporaryDir directory;
        Database database(directory.path());
        Schema::migrate(database);
        for (int use = 0; use < seedsForEachDatabase && done < seeds; ++use, ++done) {
            if (!runSeed(first + done, database, totals))
                ++failed;
        }
        std::fprintf(stderr, "%u seeds done\n", done);
    }
    std::printf("%d texts saved, %d still owed; %d conversations kept twice\n", totals.texts,
                totals.owed, totals.copies);
    std::printf("%u seeds, %u with a violation\n", seeds, failed);
    return failed == 0 ? 0 : 1;
}
