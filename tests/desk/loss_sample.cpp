// Writes log lines and messages through libDtv and ends: the files show which of them were kept.
//
//     loss_sample THREADS COUNT STATUS
//
// Each thread writes COUNT lines "THREAD NUMBER xxxx" and sends as many commands with a record of
// 100 bytes. One more line is written when the static objects of the program are destroyed.
#include "dtv/exchange.h"

#include <DtvSvCom.h>

#include <cstdlib>
#include <string>
#include <thread>
#include <vector>

namespace {

struct Listener : DtvSvLibListener {
    int recvEventFromServer(int, void*, int) override { return 0; }
};

/// Writes a line when the static objects of the program are destroyed.
struct LastLine {
    ~LastLine() { DtvSvCom_Log(0, 0, "sample", 2, "the last line"); }
} const last_line;

void work(const android::sp<DtvSvLibListener>& listener, int thread, int count) {
    for (int number = 0; number < count; ++number) {
        DtvSvCom_Log(0, 0, "sample", 2, "%d %d %s", thread, number, std::string(60, 'x').c_str());
        char record[100] = {};
        listener->sendEventToServer(0x10000001, record, sizeof record, nullptr, nullptr);
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 4) {
        return 99;
    }
    const android::sp<DtvSvLibListener> listener = new Listener;
    std::vector<std::thread> threads;
    for (int thread = 0; thread < std::atoi(argv[1]); ++thread) {
        threads.emplace_back(work, listener, thread, std::atoi(argv[2]));
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    dtv::stopDelivery();
    return std::atoi(argv[3]);
}
