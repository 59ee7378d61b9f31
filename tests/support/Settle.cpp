#include "tests/support/Settle.h"

#include "tests/support/BusyWorkers.h"

#include <QAbstractEventDispatcher>

#include <memory>

namespace {

/// Held except between two turns.
std::unique_ptr<BusyWorkers> held;

/// Whether anything was due.
bool turnEventLoop() {
    if (!held)
        held = std::make_unique<BusyWorkers>();
    bool wasDue = false;
    while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents))
        wasDue = true;
    return wasDue;
}

} // namespace

void settleAll() {
    do {
        held.reset();
    } while (turnEventLoop());
    held.reset();
}

void settleWithSlowWorker(int turns) {
    turnEventLoop();
    for (int turn = 0; turn < turns; ++turn) {
        held.reset();
        turnEventLoop();
    }
}
