#include "platform/Start.h"

#include "platform/CancellationError.h"

#include <QCoreApplication>
#include <QLoggingCategory>
#include <QMetaObject>

namespace {

Task<void> watched(std::function<Task<void>()> operation) {
    try {
        auto task = operation();
        co_await task;
    } catch (const CancellationError &) {
    } catch (const std::exception &error) {
        qCritical("an operation failed unnoticed: %s", error.what());
    }
}

} // namespace

void start(std::function<Task<void>()> operation) {
    start(*QCoreApplication::instance(), std::move(operation));
}

void start(QObject &owner, std::function<Task<void>()> operation) {
    QMetaObject::invokeMethod(
        &owner, [operation = std::move(operation)]() mutable { watched(std::move(operation)); },
        Qt::QueuedConnection);
}
