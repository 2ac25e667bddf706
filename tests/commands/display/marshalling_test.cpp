// The five routines that read the planes' objects, called by themselves: what a failure leaves in
// the record, and how a surface reference is taken.
#include "commands/drawing_places.h"
#include "commands/framework/helpers_fixture.h"
#include "commands/watched_surface.h"

#include <sys/mman.h>

#include <array>
#include <new>

namespace {

using namespace commands;
using namespace harness;

constexpr int surfaceClass = 138;

class Marshalling : public Helpers {
protected:
    void SetUp() override {
        Helpers::SetUp();
        ASSERT_EQ(env()->PushLocalFrame(64), JNI_OK);
    }
    void TearDown() override {
        env()->PopLocalFrame(nullptr);
        StrictJni::forgetLocals();
    }

    using Routine = int(JNIEnv*, jobject, void*);

    /// The record's bytes after a routine that failed; EE was there before.
    template <size_t Size>
    std::string leftBy(Routine* routine, jobject info) {
        std::vector<uint8_t> record(Size, 0xee);
        EXPECT_EQ(routine(env(), adopt(env(), info), record.data()), 1);
        EXPECT_EQ(takeException(), "");
        return hex(record);
    }

    jobject none = javaSurface(0);
};

TEST_F(Marshalling, OnlyTheFirstReasonIsLogged) {
    EXPECT_TRUE(refuseTwice(env()));
    EXPECT_TRACE(log->take(),
                 "Dtv_jni|1024|5|DEBUG    |setScreenDrawingInfo|screen_drawing_info_clazz class is "
                 "NULL, ret = 1");
}

TEST_F(Marshalling, ScreenKeepsWhatWasReadBeforeTheFailure) {
    // A number without a constant gives null.
    EXPECT_EQ(leftBy<6>(&screenDrawingInfo, screenInfo(none, 320, 180, 99, 2)),
              "ee ee ee ee ee ee");
    EXPECT_EQ(leftBy<6>(&screenDrawingInfo, screenInfo(none, 320, 180, 1, 99)),
              "ee ee ee ee 01 ee");
    {
        EnumValue four("BG_TE_DTVSVLIB_SCREEN_MODE", "NORMAL", 4);
        EXPECT_EQ(leftBy<6>(&screenDrawingInfo, screenInfo(none, 320, 180, 3, 0)),
                  "ee ee ee ee 03 ee");
    }
    // The fields are looked up in the order rotation, mode, width, height.
    {
        FailJni width("GetFieldID", 2);
        EXPECT_EQ(leftBy<6>(&screenDrawingInfo, screenInfo(none, 320, 180, 1, 2)),
                  "ee ee ee ee 01 02");
    }
    FailJni height("GetFieldID", 3);
    EXPECT_EQ(leftBy<6>(&screenDrawingInfo, screenInfo(none, 320, 180, 1, 2)), "40 01 ee ee 01 02");
}

TEST_F(Marshalling, CaptionKeepsWhatWasReadBeforeTheFailure) {
    const std::string nothing = " ee ee ee ee ee ee ee ee ee ee";
    EXPECT_EQ(leftBy<16>(&capDrawingInfo, capInfo(none, 321, 60, 3, nullptr)),
              "41 01 3c 00 03 ee" + nothing);
    {
        FailJni height("GetFieldID", 2);
        EXPECT_EQ(leftBy<16>(&capDrawingInfo, capInfo(none, 321, 60, 3, usualLayout())),
                  "41 01 ee ee 03 ee" + nothing);
    }
    jobject below = capLayout(20, 12, 4, 2, 33, -1, 5, 1);
    EXPECT_EQ(leftBy<16>(&capDrawingInfo, capInfo(none, 321, 60, 3, below)),
              "41 01 3c 00 03 ee 14 0c 04 02 21 00 ee ee ee ee");
}

TEST_F(Marshalling, CaptionLayoutKeepsWhatWasReadBeforeTheFailure) {
    EXPECT_EQ(leftBy<10>(&capDisplayInfo, capLayout(20, 12, 4, 2, -1, 44, 5, 1)),
              "14 0c 04 02 ee ee ee ee ee ee");
    EXPECT_EQ(leftBy<10>(&capDisplayInfo, capLayout(20, 12, 4, 2, 33, 44, 99, 1)),
              "14 0c 04 02 21 00 2c 00 ee ee");
    EXPECT_EQ(leftBy<10>(&capDisplayInfo, capLayout(20, 12, 4, 2, 33, 44, 5, 99)),
              "14 0c 04 02 21 00 2c 00 05 ee");
    for (int field = 0; field < 4; ++field) {
        const char* const left[] = {
            "ee ee ee ee ee ee ee ee ee ee", "14 ee ee ee ee ee ee ee ee ee",
            "14 0c ee ee ee ee ee ee ee ee", "14 0c 04 ee ee ee ee ee ee ee"};
        FailJni missing("GetFieldID", field);
        EXPECT_EQ(leftBy<10>(&capDisplayInfo, usualLayout()), left[field]) << field;
    }
}

TEST_F(Marshalling, BmlKeepsWhatWasReadBeforeTheFailure) {
    EXPECT_EQ(leftBy<6>(&bmlDrawingInfo, bmlInfo(none, 240, 427, 99)), "ee ee ee ee ee ee");
    {
        FailJni width("GetFieldID", 1);
        EXPECT_EQ(leftBy<6>(&bmlDrawingInfo, bmlInfo(none, 240, 427, 2)), "ee ee ee ee 02 ee");
    }
    FailJni height("GetFieldID", 2);
    EXPECT_EQ(leftBy<6>(&bmlDrawingInfo, bmlInfo(none, 240, 427, 2)), "f0 00 ee ee 02 ee");
}

// The surface's reference.

class SurfaceReference : public Marshalling {
protected:
    void SetUp() override {
        Marshalling::SetUp();
        ASSERT_EQ(registerClass(env(), surfaceClass, "android/view/Surface"), 0);
        log->clear();
    }

    /// setSurface on a BML plane with this native surface.
    static int take(int address, android::sp<android::Surface>& slot) {
        jobject info = adopt(env(), bmlInfo(javaSurface(address), 1, 2, 0));
        auto of = static_cast<jclass>(adopt(env(), env()->GetObjectClass(info)));
        return surface(env(), of, info, &slot);
    }
};

TEST_F(SurfaceReference, IsTakenBeforeTheSlotsOldOneIsDropped) {
    /// Stores at its end how many references another surface has.
    class Last : public android::Surface {
    public:
        Last(const android::Surface& to, int& references) : other(to), seen(references) {}
        ~Last() override { seen = other.getStrongCount(); }

    private:
        const android::Surface& other;
        int& seen;
    };
    NativeSurface next;
    int seen = -1;
    android::sp<android::Surface> slot(new Last(*next.get(), seen));
    const auto address = static_cast<int>(reinterpret_cast<intptr_t>(next.get()));
    EXPECT_EQ(take(address, slot), 0);
    EXPECT_EQ(seen, 2) << "the slot already held its new reference";
    EXPECT_EQ(slot.get(), next.get());
}

TEST_F(SurfaceReference, OfTheSameSurfaceKeepsItAlive) {
    Sequence sequence;
    auto* only = new WatchedSurface(sequence, "only");
    android::sp<android::Surface> slot(only);
    EXPECT_EQ(take(only->address(), slot), 0);
    EXPECT_EQ(slot.get(), only);
    EXPECT_EQ(only->getStrongCount(), 1);
    for (const std::string& step : sequence.take()) {
        EXPECT_NE(step, "gone only");
    }
    slot.clear();
    EXPECT_EQ(sequence.take(), std::vector<std::string>{"gone only"});
}

TEST_F(SurfaceReference, OfANullPlaneIsRefusedAfterItsFieldsWereFound) {
    NativeSurface before;
    android::sp<android::Surface> slot(const_cast<android::Surface*>(before.get()));
    jobject info = bmlInfo(none, 1, 2, 0);
    auto of = static_cast<jclass>(adopt(env(), env()->GetObjectClass(info)));
    Calls read("GetObjectField");
    EXPECT_EQ(surface(env(), of, nullptr, &slot), 1);
    EXPECT_TRACE(log->take(), nativeTrace("setSurface", R"(
        START
        DEBUG |surface_object is NULL, ret = 1)"));
    EXPECT_EQ(read.made(), 0) << "no null is passed to the VM";
    EXPECT_EQ(slot.get(), before.get());
    EXPECT_EQ(before.count(), 2);

    // A class without the field is reported first.
    auto other = static_cast<jclass>(adopt(env(), findClass("java/lang/Object")));
    EXPECT_EQ(surface(env(), other, nullptr, &slot), 1);
    EXPECT_EQ(takeException(), "");
    EXPECT_TRACE(log->take(), nativeTrace("setSurface", R"(
        START
        DEBUG |surface_handle fid is NULL, ret = 1)"));
    EXPECT_EQ(slot.get(), before.get());
}

TEST_F(SurfaceReference, OfNoClassHasNoField) {
    NativeSurface before;
    android::sp<android::Surface> slot(const_cast<android::Surface*>(before.get()));
    Calls looked_up("GetFieldID");
    EXPECT_EQ(surface(env(), nullptr, nullptr, &slot), 1);
    EXPECT_EQ(looked_up.made(), 1) << "the one of the surface: no null is passed to the VM";
    EXPECT_TRACE(log->take(), nativeTrace("setSurface", R"(
        START
        DEBUG |surface_handle fid is NULL, ret = 1)"));
    EXPECT_EQ(slot.get(), before.get());
}

/// The int is the address's 32 bits: one above 2 GB is negative in Java.
TEST_F(SurfaceReference, MayBeAbove2GB) {
    class Placed : public android::Surface {
    public:
        static void* operator new(size_t, void* place) { return place; }
        static void operator delete(void*) {}
    };
    void* const wanted = reinterpret_cast<void*>(uintptr_t{0x90000000});
    void* const place = mmap(wanted, 4096, PROT_READ | PROT_WRITE,
                             MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0);
    if (place != wanted) {
        GTEST_SKIP() << "this process has other uses of that address";
    }
    {
        android::sp<android::Surface> own(new (place) Placed);
        android::sp<android::Surface> slot;
        const auto address = reinterpret_cast<uintptr_t>(own.get());
        EXPECT_EQ(take(static_cast<int>(address), slot), 0);
        EXPECT_EQ(slot.get(), own.get());
        EXPECT_EQ(own->getStrongCount(), 2);
    }
    munmap(place, 4096);
}

} // namespace
