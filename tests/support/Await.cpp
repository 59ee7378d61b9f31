#include "tests/support/Await.h"

#include <QAbstractEventDispatcher>
#include <QEventLoop>
#include <QTimer>

bool eventually(const std::function<bool()> &condition, std::chrono::milliseconds limit) {
    if (condition())
        return true;
    QEventLoop loop;
    bool fulfilled = false;
    const auto check = [&] {
        fulfilled = fulfilled || condition();
        if (fulfilled)
            loop.quit();
    };
    auto *dispatcher = QAbstractEventDispatcher::instance();
    QObject::connect(dispatcher, &QAbstractEventDispatcher::aboutToBlock, &loop, check);
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    timer.start(limit);
    loop.exec();
    return fulfilled;
}

void settleEventLoop() {
    // What a round did may have made something due.
    for (int round = 0; round < 8; ++round) {
        QEventLoop loop;
        QTimer::singleShot(0, &loop, &QEventLoop::quit);
        loop.exec();
    }
}
