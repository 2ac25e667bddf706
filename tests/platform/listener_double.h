// A client of libDtv that is not the bridge: it keeps what it is given.
#pragma once

#include <DtvSvCom.h>
#include <DtvSvLibListener.h>

#include <pthread.h>

#include <cstring>
#include <functional>
#include <mutex>
#include <set>
#include <string>
#include <vector>

namespace platform {

struct Event {
    int id;
    bool had_data;
    int size;
    std::vector<unsigned char> bytes; ///< the 8 bytes that every buffer holds
};

class ListenerDouble : public DtvSvLibListener {
public:
    int recvEventFromServer(int event_id, void* data, int size) override {
        if (before) {
            before();
        }
        const std::lock_guard<std::mutex> lock(mutex);
        Event event{event_id, data != nullptr, size, {}};
        if (data != nullptr) {
            event.bytes.resize(8);
            std::memcpy(event.bytes.data(), data, 8);
        }
        events.push_back(event);
        threads.insert(pthread_self());
        task_names.insert(DtvSvCom_GetMyTaskName());
        return answer;
    }

    std::function<void()> before; ///< run at the start of each event
    int answer = 0;
    std::mutex mutex;
    std::vector<Event> events;
    std::set<pthread_t> threads;
    std::set<std::string> task_names;
};

} // namespace platform
