#include "replay/delivery_threads.h"

#include <utils/AndroidThreads.h>

#include <pthread.h>

#include <utility>

namespace replay {

DeliveryThreads& DeliveryThreads::instance() {
    static DeliveryThreads& threads = *new DeliveryThreads;
    return threads;
}

bool DeliveryThreads::run(const std::string& name, std::function<void()> work,
                          std::function<void()> done) {
    const std::lock_guard<std::mutex> lock(mutex_);
    const bool is_new = idle_.empty();
    Worker* const worker = is_new ? new Worker : idle_.front();
    worker->name = name;
    worker->work = std::move(work);
    worker->done = std::move(done);
    if (!is_new) {
        idle_.pop_front();
        worker->given.notify_one();
        return true;
    }
    // As libDtv makes its own, so that they are threads of the Java VM.
    const std::string first_name = "DtvReplay-" + std::to_string(++made_);
    if (!android::createThreadEtc(runWorker, worker, first_name.c_str())) {
        delete worker;
        return false;
    }
    return true;
}

int DeliveryThreads::runWorker(void* worker) {
    instance().serve(*static_cast<Worker*>(worker));
    return 0;
}

void DeliveryThreads::serve(Worker& worker) {
    std::unique_lock<std::mutex> lock(mutex_);
    for (;;) {
        worker.given.wait(lock, [&worker] { return worker.work != nullptr; });
        {
            // What the two hold goes without the lock.
            const std::function<void()> work = std::exchange(worker.work, nullptr);
            const std::function<void()> done = std::exchange(worker.done, nullptr);
            pthread_setname_np(pthread_self(), worker.name.c_str());
            lock.unlock();
            work();
            lock.lock();
            idle_.push_back(&worker);
            lock.unlock();
            done();
        }
        lock.lock();
    }
}

} // namespace replay
