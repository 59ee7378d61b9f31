// When the queue of changes goes to the service.
#include "store/AppStore.h"

void AppStore::cancelSync() {
    publish(m_syncing, false, &AppStore::syncingChanged);
    publish(m_syncStatus, QStringLiteral("Sign in to sync across devices."),
            &AppStore::syncStatusChanged);
}
