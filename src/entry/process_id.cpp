#include "entry/process_id.h"

#include <pthread.h>
#include <unistd.h>

#include <atomic>

namespace {

/// 0: not kept. Written before the load ends, and by the only thread of a child.
std::atomic<int> kept_id{0};
static_assert(std::atomic<int>::is_always_lock_free);

void keepOwnId() {
    kept_id.store(static_cast<int>(getpid()), std::memory_order_relaxed);
}

} // namespace

int trace::processId() {
    const int id = kept_id.load(std::memory_order_relaxed);
    return id != 0 ? id : static_cast<int>(getpid());
}

void trace::keepProcessId() {
    if (pthread_atfork(nullptr, nullptr, keepOwnId) == 0) {
        keepOwnId();
    }
}
