#include "platform/LatestTask.h"

#include "platform/CancellationError.h"
#include "platform/Start.h"

void LatestTask::begin(std::function<Task<void>(std::stop_token)> operation) {
    stop();
    m_stop = std::stop_source();
    start([operation = std::move(operation), token = m_stop.get_token()] {
        if (token.stop_requested())
            throw CancellationError();
        return operation(token);
    });
}
