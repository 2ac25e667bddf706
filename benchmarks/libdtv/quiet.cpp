#pragma GCC visibility push(default)
#include <DtvSvCom.h>
#include <DtvSvLibListener.h>
#pragma GCC visibility pop

#include "libdtv/quiet.h"

#include <atomic>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <utility>

namespace quiet {
namespace {

DtvSvLibListener* last_listener = nullptr;
Sends all_sends;
std::atomic<unsigned long> level_mask{0};
std::vector<std::string> kept_lines;

/// What a synchronous command is answered: session 1, result 0.
constexpr unsigned char kReply[8] = {1, 0, 0, 0, 0, 0, 0, 0};

int take(int message_id, const void* data, int size, int surfaces, void* reply, int* reply_size) {
    const auto length = static_cast<size_t>(size);
    ++all_sends.count;
    all_sends.bytes += length;
    all_sends.message_id = message_id;
    all_sends.size = size;
    all_sends.surfaces = surfaces;
    std::memcpy(all_sends.record, data,
                length < sizeof(all_sends.record) ? length : sizeof(all_sends.record));
    if (reply != nullptr) {
        std::memcpy(reply, kReply, sizeof(kReply));
        *reply_size = sizeof(kReply);
    }
    return 0;
}

/// A line's fields are separated by commas: nothing, the owner, the task, the level, the function,
/// the source line, the message.
std::string withoutSourceLine(std::string line) {
    constexpr int kCommasBefore = 5;
    size_t at = 0;
    for (int comma = 0; comma < kCommasBefore; ++comma) {
        at = line.find(',', at) + 1;
    }
    return line.erase(at, line.find(',', at) - at);
}

} // namespace

DtvSvLibListener* lastListener() {
    return last_listener;
}

Sends& sends() {
    return all_sends;
}

void setMask(unsigned long mask) {
    level_mask.store(mask, std::memory_order_relaxed);
}

std::vector<std::string> takeLines() {
    return std::exchange(kept_lines, {});
}

} // namespace quiet

DtvSvLibListener::DtvSvLibListener() {
    quiet::last_listener = this;
}

DtvSvLibListener::~DtvSvLibListener() = default;

int DtvSvLibListener::sendEventToServer(int message_id, void* data, int size, void* reply,
                                        int* reply_size) {
    return quiet::take(message_id, data, size, 0, reply, reply_size);
}

int DtvSvLibListener::sendEventToServer(int message_id, void* data, int size, TS_DTVSV_SP* sp,
                                        void* reply, int* reply_size) {
    return quiet::take(message_id, data, size, sp->surface_count, reply, reply_size);
}

void DtvSvCom_Log(int, short, const char*, unsigned long mask, const char* format, ...) {
    if ((mask & quiet::level_mask.load(std::memory_order_relaxed)) == 0) {
        return;
    }
    char text[8192];
    va_list values;
    va_start(values, format);
    std::vsnprintf(text, sizeof(text), format, values);
    va_end(values);
    quiet::kept_lines.push_back(quiet::withoutSourceLine(text));
}

const char* DtvSvCom_GetMyTaskName(void) {
    return "bench";
}
