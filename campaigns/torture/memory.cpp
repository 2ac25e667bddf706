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
std::atomic<long> blocks{0};
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
        ++blocks;
    }
    return memory;
}

void release(void* memory, const void* caller) {
    if (memory != nullptr && fromBridge(caller)) {
        --blocks;
    }
    __libc_free(memory);
}

} // namespace

extern "C" __attribute__((visibility("default"), noinline)) void* malloc(size_t size) {
    return allocate(size, __builtin_return_address(0));
}
extern "C" __attribute__((visibility("default"), noinline)) void free(void* memory) {
    release(memory, __builtin_return_address(0));
}
__attribute__((visibility("default"), noinline)) void*
operator new(size_t size, const std::nothrow_t&) noexcept {
    return allocate(size, __builtin_return_address(0));
}
__attribute__((visibility("default"), noinline)) void operator delete(void* memory) noexcept {
    release(memory, __builtin_return_address(0));
}
__attribute__((visibility("default"), noinline)) void operator delete(void* memory,
                                                                      size_t) noexcept {
    release(memory, __builtin_return_address(0));
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
    return blocks;
}

} // namespace torture
