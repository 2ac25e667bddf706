// What the tests of commands with structured arguments share: a fixture, a short way to write trace
// lines, and drawing places made from C++.
#pragma once

#include "harness/harness.h"

#include <gui/Surface.h>
#include <utils/StrongPointer.h>

namespace commands {

/// Trace lines written short, one a line:
///
///     START |hdl = 3            a line of the native `native`, the level word abbreviated to
///                               START, END, DEBUG, INFO or ERROR
///     DEBUG setSurface|text     a line of another free function
///     *INFO CallMethod|text     a line of the listener object
///     RESULT 5                  both lines of getRetCode
///     BUILD 209 128             the lines of a construction by method row 209 of class 128
///     FAIL 209 128              the lines of one that fails
///     COPY                      the lines of a string's copy into its field
std::string trace(const std::string& native, const std::string& lines);

#define EXPECT_LINES(native, expected)                                                             \
    EXPECT_TRACE(log->take(), ::commands::trace(native, expected))

/// A native drawing surface that the test holds one reference to, and the Java object before it.
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

class CommandTest : public testing::Test {
protected:
    void SetUp() override;

    /// Calls a native method (its name without "DtvSvLib_") and gives what it answered as a tree,
    /// without the result enumeration's name. A command holds at most 16 references at once, and
    /// releases what it takes from strings and arrays.
    std::string run(const std::string& name, const std::vector<harness::Value>& arguments);
    /// The same for a method whose descriptor the VM cannot be asked for.
    std::string run(const std::string& name, const std::string& descriptor,
                    const std::vector<harness::Value>& arguments);

    /// What was sent since the last call, "" for nothing. Kept in `messages`.
    std::string sent();

    std::shared_ptr<harness::ServiceDouble> service;
    std::shared_ptr<harness::LogRecorder> log;
    std::vector<harness::Message> messages;
};

constexpr const char* outOfMemory =
    "throws java.lang.OutOfMemoryError: as if the VM had no memory left";

} // namespace commands
