#include "replay/here.h"

#include <pthread.h>

namespace replay::here {

Thread& current() {
    thread_local Thread thread;
    return thread;
}

std::string threadName() {
    char name[16] = {};
    return pthread_getname_np(pthread_self(), name, sizeof name) == 0 ? name : "";
}

} // namespace replay::here
