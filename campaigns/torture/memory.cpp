#include "memory.h"

#include "strict_jni/strict_jni.h"

#include <atomic>
#include <cstdlib>
#include <new>

// The C library's own functions, under the names it keeps for programs that replace the others.
extern "C" void* __libc_malloc(size_t size);
extern "C" void __libc_free(void* memory);

namespace {

std::atomic<bool> watching{false};
std::atomic<int> counted{0};
std::atomic<int> failing{-1};
std::atomic<bool> failing_on{false};
/// The blocks that the bridge has. They are given back by other code as well, and by jumps that
/// have the caller's return address. A bridge that is loaded has one.
constexpr int most_blocks = 64;
std::atomic<void*> blocks[most_blocks];
std::atomic<int> used_blocks{0}; ///< the places after these have never been taken
/// Finding the bridge's addresses allocates.
thread_local bool asking = false;

bool fromBridge(const void* caller) {
    if (!watching.load(std::memory_order_relaxed) || asking) {
        return false;
    }
    asking = true;
    const bool is = strict_jni::StrictJni::isWatched(caller);
    asking = false;
    return is;
}

void keep(void* memory) {
    for (int i = 0; i < most_blocks; ++i) {
        void* none = nullptr;
        if (blocks[i].compare_exchange_strong(none, memory)) {
            int used = used_blocks;
            while (used <= i && !used_blocks.compare_exchange_weak(used, i + 1)) {
            }
            return;
        }
    }
    std::abort(); // more than the bridge can have
}

void* allocate(size_t size, const void* caller) {
    if (!fromBridge(caller)) {
        return __libc_malloc(size);
    }
    const int number = counted++;
    const int fails = failing.load();
    if (fails >= 0 && (number == fails || (number > fails && failing_on))) {
        return nullptr;
    }
    void* const memory = __libc_malloc(size);
    if (memory != nullptr) {
        keep(memory);
    }
    return memory;
}

void release(void* memory) {
    const int used = used_blocks.load(std::memory_order_relaxed);
    for (int i = 0; i < used && memory != nullptr; ++i) {
        if (blocks[i].load(std::memory_order_relaxed) == memory) {
            blocks[i] = nullptr;
        }
    }
    __libc_free(memory);
}

} // namespace

extern "C" __attribute__((visibility("default"), noinline)) void* malloc(size_t size) {
    return allocate(size, __builtin_return_address(0));
}
extern "C" __attribute__((visibility("default"), noinline)) void free(void* memory) {
    release(memory);
}
__attribute__((visibility("default"), noinline)) void*
operator new(size_t size, const std::nothrow_t&) noexcept {
    return allocate(size, __builtin_return_address(0));
}
__attribute__((visibility("default"), noinline)) void operator delete(void* memory) noexcept {
    release(memory);
}
__attribute__((visibility("default"), noinline)) void operator delete(void* memory,
                                                                      size_t) noexcept {
    release(memory);
}

namespace torture {

void Memory::begin(int fails, bool on) {
    failing = fails;
    failing_on = on;
    counted = 0;
    watching = true;
}

int Memory::end() {
    failing = -1;
    return counted;
}

long Memory::held() {
    long count = 0;
    for (const auto& block : blocks) {
        count += block != nullptr ? 1 : 0;
    }
    return count;
}

} // namespace torture
