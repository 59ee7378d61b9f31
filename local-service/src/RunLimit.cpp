#include "RunLimit.h"

RunLimit::Place RunLimit::admit() {
    int free = m_free.load();
    do {
        if (free == 0)
            return nullptr;
    } while (!m_free.compare_exchange_weak(free, free - 1));
    return Place(this, [limit = shared_from_this()](void *) { ++limit->m_free; });
}
