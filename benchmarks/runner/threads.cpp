#include "runner/threads.h"

#include "runner/bridges.h"
#include "runner/checks.h"
#include "runner/java_side.h"
#include "runner/records.h"
#include "runner/virtual_machine.h"

#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>

namespace bench {
namespace {

/// Threads that wait for work. The bridge never forgets a thread, so they live until the process
/// ends; the calling thread is the first of them.
class Crew {
public:
    Crew() {
        for (int number = 1; number < kMostThreads; ++number) {
            std::thread([this, number] { serve(number); }).detach();
        }
    }

    /// Has the first `count` threads do the work at once; it is given the thread's number, from 0.
    void run(int count, const std::function<void(int number)>& work) {
        {
            const std::lock_guard lock(mutex_);
            work_ = &work;
            working_ = count;
            left_ = count - 1;
            ++round_;
        }
        changed_.notify_all();
        work(0);
        std::unique_lock lock(mutex_);
        changed_.wait(lock, [this] { return left_ == 0; });
    }

private:
    void serve(int number) {
        int served = 0;
        std::unique_lock lock(mutex_);
        while (true) {
            changed_.wait(lock, [&] { return round_ != served; });
            served = round_;
            if (number >= working_) {
                continue;
            }
            const std::function<void(int)>& work = *work_;
            lock.unlock();
            work(number);
            lock.lock();
            --left_;
            changed_.notify_all();
        }
    }

    std::mutex mutex_; ///< guards everything below
    std::condition_variable changed_;
    const std::function<void(int)>* work_ = nullptr;
    int round_ = 0;   ///< counts the runs
    int working_ = 0; ///< threads of this run
    int left_ = 0;    ///< of those, without the first, the ones that have not ended
};

/// Delivers the shortest event, on which threads meet most often.
void deliver(DtvSvLibListener& listener, int number, int count) {
    EventRecord event = eventRecords(number + 1).front();
    for (int i = 0; i < count; ++i) {
        if (listener.recvEventFromServer(event.id, event.bytes.data(),
                                         static_cast<int>(event.bytes.size())) != 0) {
            giveUp("an event was not delivered on thread " + std::to_string(number));
        }
    }
}

/// The first event of each thread comes alone, as every libDtv has to let it come.
void introduce(Crew& crew, DtvSvLibListener& listener) {
    for (int newest = 0; newest < kMostThreads; ++newest) {
        crew.run(newest + 1, [&](int number) {
            if (number == newest) {
                deliver(listener, number, 1);
            }
        });
    }
}

} // namespace

std::vector<Result> measureThreads(const Plan& plan) {
    static Crew& crew = *new Crew;
    std::vector<const Bridge*> compared;
    for (const Bridge& bridge : bridges()) {
        if (!bridge.looks_up) {
            compared.push_back(&bridge);
            introduce(crew, *bridge.listener);
        }
    }
    // At half a microsecond for an event, a round takes several batches of the other operations.
    const int events = static_cast<int>(plan.batch_ms * 4 * 1000 / 0.5);
    std::vector<Result> all;
    for (const int threads : {1, 2, 4, 8, kMostThreads}) {
        Result result = {std::to_string(threads) + (threads == 1 ? " thread" : " threads"),
                         "threads",
                         "ns of wall clock",
                         {},
                         {}};
        for (const Bridge* bridge : compared) {
            result.series.push_back({bridge->name, events, {}});
        }
        for (int round = 0; round < plan.rounds; ++round) {
            for (size_t i = 0; i < compared.size(); ++i) {
                const Arrived before = arrivedEvents();
                const int share = events / threads;
                const double start = wallTime();
                crew.run(threads,
                         [&](int number) { deliver(*compared[i]->listener, number, share); });
                result.series[i].values.push_back((wallTime() - start) / (share * threads));
                require(arrivedEvents().count - before.count == share * threads,
                        result.name + ", " + compared[i]->name + ": not all events reached Java");
            }
        }
        all.push_back(result);
    }
    return all;
}

} // namespace bench
