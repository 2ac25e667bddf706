// The threads on which a replay delivers its events. The bridge never forgets a thread, and has
// room for few: they are there until the process ends, and one replay after the other uses them.
#pragma once

#include <condition_variable>
#include <deque>
#include <functional>
#include <mutex>
#include <string>
#include <vector>

namespace replay {

class DeliveryThreads {
public:
    /// Never destroyed.
    static DeliveryThreads& instance();

    /// Runs `work` on an idle thread, under a name of 15 bytes at most, then `done`, by which time
    /// the thread is idle again. A thread is made when none is idle; false when that fails.
    bool run(const std::string& name, std::function<void()> work, std::function<void()> done);

private:
    struct Worker {
        std::condition_variable given;
        std::string name;
        std::function<void()> work;
        std::function<void()> done;
    };

    static int runWorker(void* worker);
    void serve(Worker& worker);

    std::mutex mutex_;         ///< guards all; not held while work is done
    std::deque<Worker*> idle_; ///< the one that has been idle longest comes first
    int made_ = 0;
};

} // namespace replay
