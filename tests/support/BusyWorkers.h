#pragma once

#include <QSemaphore>
#include <QThreadPool>

#include <memory>

/// Keeps all worker threads from their work. What they are given meanwhile they do, one after the
/// other, when this is released.
class BusyWorkers final {
public:
    BusyWorkers() {
        auto &pool = *QThreadPool::globalInstance();
        m_former = pool.maxThreadCount();
        pool.setMaxThreadCount(1);
        pool.start([this] { m_gate.acquire(); });
    }
    ~BusyWorkers() {
        release();
        // Not by waiting for the pool, which would end its threads.
        const auto done = std::make_shared<QSemaphore>();
        QThreadPool::globalInstance()->start([done] { done->release(); });
        done->acquire();
        QThreadPool::globalInstance()->setMaxThreadCount(m_former);
    }
    Q_DISABLE_COPY_MOVE(BusyWorkers)

    void release() { m_gate.release(); }

private:
    QSemaphore m_gate;
    int m_former = 0;
};
