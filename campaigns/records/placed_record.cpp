#include "records/placed_record.h"

#include "records/limits.h"

#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#if defined(__has_feature)
#define HOSTILE_CLANG_SANITIZER __has_feature(address_sanitizer)
#else
#define HOSTILE_CLANG_SANITIZER 0
#endif
#if defined(__SANITIZE_ADDRESS__) || HOSTILE_CLANG_SANITIZER
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(address, size) ((void)(address), (void)(size))
#define ASAN_UNPOISON_MEMORY_REGION(address, size) ((void)(address), (void)(size))
#endif

namespace hostile {
namespace {

/// Poisoned bytes beside a record: more than the sanitizer needs to see the next field or text
/// read.
constexpr size_t kBeside = 256;

} // namespace

PlacedRecord::PlacedRecord() : page_(static_cast<size_t>(sysconf(_SC_PAGESIZE))) {
    room_ = (kLongestRecord + page_ - 1) / page_ * page_;
    void* const mapped =
        mmap(nullptr, room_ + 2 * page_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (mapped == MAP_FAILED ||
        mprotect(static_cast<uint8_t*>(mapped) + page_, room_, PROT_READ | PROT_WRITE) != 0) {
        std::perror("memory for a record");
        std::exit(71);
    }
    mapped_ = static_cast<uint8_t*>(mapped);
    begin_ = mapped_ + page_;
    poisoned_from_ = begin_;
    poisoned_to_ = begin_;
}

PlacedRecord::~PlacedRecord() {
    ASAN_UNPOISON_MEMORY_REGION(begin_, room_);
    munmap(mapped_, room_ + 2 * page_);
}

uint8_t* PlacedRecord::lay(const Input& input) {
    if (input.null) {
        return nullptr;
    }
    const size_t length = std::min(readableBytes(input.id, input.size), kLongestRecord);
    ASAN_UNPOISON_MEMORY_REGION(poisoned_from_, static_cast<size_t>(poisoned_to_ - poisoned_from_));
    uint8_t* const record = input.begins_at_page ? begin_ : begin_ + room_ - length;
    record_ = record;
    length_ = length;
    const size_t sent = std::min(input.bytes.size(), length);
    if (sent != 0) {
        std::memcpy(record, input.bytes.data(), sent);
    }
    std::memset(record + sent, 0, length - sent);
    if (input.begins_at_page) {
        poisoned_from_ = record + length;
        poisoned_to_ = std::min(poisoned_from_ + kBeside, begin_ + room_);
    } else {
        poisoned_to_ = record;
        poisoned_from_ =
            std::max(begin_, record - std::min(kBeside, static_cast<size_t>(record - begin_)));
    }
    ASAN_POISON_MEMORY_REGION(poisoned_from_, static_cast<size_t>(poisoned_to_ - poisoned_from_));
    return record;
}

const char* PlacedRecord::faultAt(const void* address, char (&text)[80]) const {
    const auto* const at = static_cast<const uint8_t*>(address);
    if (at < mapped_ || at >= mapped_ + room_ + 2 * page_ || record_ == nullptr) {
        return nullptr;
    }
    if (at < begin_) {
        std::snprintf(text, sizeof text, "%zu bytes before the record's begin",
                      static_cast<size_t>(record_ - at));
    } else {
        std::snprintf(text, sizeof text, "%zu bytes after the record's end",
                      static_cast<size_t>(at - record_) - length_);
    }
    return text;
}

} // namespace hostile
