// What is pinned to the wall.
#include "store/AppStore.h"

Task<void> AppStore::refreshWall() {
    // Nothing is ever pinned yet.
    co_return;
}
