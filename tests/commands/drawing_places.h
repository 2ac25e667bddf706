// Places to draw, made from C++: native surfaces and the Java objects that describe the planes.
#pragma once

#include "commands/command_test.h"

#include <gui/Surface.h>
#include <utils/StrongPointer.h>

namespace commands {

/// A native drawing surface that the test holds one reference to, and the Java object for it.
class NativeSurface {
public:
    NativeSurface();
    jobject java() const { return object; }
    const android::Surface* get() const { return held.get(); }
    /// References held, the test's own included.
    int count() const { return held->getStrongCount(); }

private:
    android::sp<android::Surface> held;
    jobject object;
};

/// A Java surface with this address in it.
jobject javaSurface(int address);

// The places to draw, by the numbers of their enumerations; a number without a constant gives null.
jobject screenInfo(jobject surface, int width, int height, int rotate, int mode);
jobject bmlInfo(jobject surface, int width, int height, int rotate);
jobject capInfo(jobject surface, int width, int height, int rotate, jobject layout);
jobject capLayout(int font, int characters, int lines, int separator, int x, int y, int color,
                  int alpha);
/// 20, 12, 4, 2, 33, 44, 5, 1
jobject usualLayout();

} // namespace commands
