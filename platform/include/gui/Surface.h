// A drawing surface: for the desk, a reference-counted object with nothing in it.
#pragma once

#include <utils/RefBase.h>

#include <cstddef>

namespace android {

/// The native half of android.view.Surface, whose int field mSurface holds its address. So that an
/// int can hold it on a 64-bit machine too, every Surface is in the low 2 GiB of the address
/// space.
class Surface : public RefBase {
public:
    Surface();
    ~Surface() override;

    /// Ends the process with a message when the low 2 GiB have no room left.
    static void* operator new(size_t size);
    static void operator delete(void* memory);
};

} // namespace android
