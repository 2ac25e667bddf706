// Surfaces for the desk, and their memory.
#pragma GCC visibility push(default)
#include <gui/Surface.h>
#pragma GCC visibility pop

#include <sys/mman.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <new>

#if defined(__SANITIZE_ADDRESS__)
#define DTV_ADDRESS_SANITIZER 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define DTV_ADDRESS_SANITIZER 1
#endif
#endif
#ifdef DTV_ADDRESS_SANITIZER
#include <sanitizer/asan_interface.h>
#else
#define ASAN_POISON_MEMORY_REGION(address, size) (static_cast<void>(address))
#define ASAN_UNPOISON_MEMORY_REGION(address, size) (static_cast<void>(address))
#endif

namespace android {
namespace {

[[noreturn]] void endExhausted(size_t size) {
    std::fprintf(stderr, "libgui: no room for a surface of %zu bytes below 2 GiB\n", size);
    std::abort();
}

/// Memory in the low 2 GiB: blocks of powers of two, which go back to the list they came from and
/// are never given back to the system.
class LowArena {
public:
    void* allocate(size_t size) {
        size_t size_class = smallest_class;
        while (size_class < classes && (size_t{1} << size_class) - sizeof(Block) < size) {
            ++size_class;
        }
        if (size_class >= classes) {
            endExhausted(size);
        }
        const std::lock_guard<std::mutex> lock(mutex_);
        if (free_[size_class] == nullptr && !refill(size_class)) {
            endExhausted(size);
        }
        Block* block = free_[size_class];
        free_[size_class] = block->next;
        block->next = nullptr;
        void* memory = block + 1;
        ASAN_UNPOISON_MEMORY_REGION(memory, size);
        return memory;
    }

    void release(void* memory) {
        Block* block = static_cast<Block*>(memory) - 1;
        // A surface that is used after its end is to be found here as it is on the heap.
        ASAN_POISON_MEMORY_REGION(memory, (size_t{1} << block->size_class) - sizeof(Block));
        const std::lock_guard<std::mutex> lock(mutex_);
        block->next = free_[block->size_class];
        free_[block->size_class] = block;
    }

private:
    /// The header of a block, before the memory that is handed out.
    struct alignas(std::max_align_t) Block {
        size_t size_class; ///< the block is 2 to the power of this long
        Block* next;       ///< in the list of free blocks
    };

    static constexpr uintptr_t limit = uintptr_t{1} << 31;
    static constexpr size_t chunk_size = size_t{1} << 18; ///< asked from the system at a time
    static constexpr size_t smallest_class = 6;
    static constexpr size_t classes = 31;

    /// Cuts a new piece of memory into free blocks. False when there is none.
    bool refill(size_t size_class) {
        const size_t block_size = size_t{1} << size_class;
        const size_t length = std::max(chunk_size, block_size);
        char* chunk = static_cast<char*>(mapLow(length));
        if (chunk == nullptr) {
            return false;
        }
        for (size_t offset = length; offset >= block_size; offset -= block_size) {
            Block* block = new (chunk + offset - block_size) Block{size_class, free_[size_class]};
            ASAN_POISON_MEMORY_REGION(block + 1, block_size - sizeof(Block));
            free_[size_class] = block;
        }
        return true;
    }

    static void* mapLow(size_t length) {
#ifdef MAP_32BIT
        if (void* memory = mapAt(nullptr, length, MAP_32BIT)) {
            return memory;
        }
#endif
        // Where the system has no such request, and where its part of the low memory is full: ask
        // for one address after the other.
        for (uintptr_t address = chunk_size; address + length <= limit; address += chunk_size) {
            if (void* memory = mapAt(reinterpret_cast<void*>(address), length, 0)) {
                return memory;
            }
        }
        return nullptr;
    }

    /// Null when there is no memory, or none in the low 2 GiB.
    static void* mapAt(void* hint, size_t length, int flags) {
        void* memory =
            mmap(hint, length, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | flags, -1, 0);
        if (memory == MAP_FAILED) {
            return nullptr;
        }
        if (reinterpret_cast<uintptr_t>(memory) + length > limit) {
            munmap(memory, length);
            return nullptr;
        }
        return memory;
    }

    std::mutex mutex_;
    std::array<Block*, classes> free_{};
};

/// Never destroyed, for surfaces may go while the process ends.
LowArena& arena() {
    static LowArena& instance = *new LowArena;
    return instance;
}

constexpr bool fits_an_int = sizeof(void*) <= sizeof(int);

} // namespace

Surface::Surface() = default;

Surface::~Surface() = default;

void* Surface::operator new(size_t size) {
    return fits_an_int ? ::operator new(size) : arena().allocate(size);
}

void Surface::operator delete(void* memory) {
    if (memory == nullptr) {
        return;
    }
    if (fits_an_int) {
        ::operator delete(memory);
    } else {
        arena().release(memory);
    }
}

} // namespace android
