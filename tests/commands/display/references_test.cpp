// When a command releases its TS_DTVSV_SP: after its last line, the second group first, each
// group from its last slot.
#include "commands/drawing_places.h"
#include "commands/watched_surface.h"

namespace {

using namespace commands;
using namespace harness;

class SurfaceReferences : public testing::Test {
protected:
    void SetUp() override { ASSERT_EQ(Product::load(), ""); }

    jobject javaOf(WatchedSurface* surface) { return javaSurface(surface->address()); }

    /// The steps from the send on without the JNI calls.
    std::vector<std::string> afterSend() {
        std::vector<std::string> after;
        bool sent = false;
        for (const std::string& step : sequence.take()) {
            sent = sent || step.compare(0, 5, "send ") == 0;
            if (sent && step.compare(0, 4, "JNI ") != 0) {
                after.push_back(step);
            }
        }
        return after;
    }

    Sequence sequence;
    jobject video = javaOf(new WatchedSurface(sequence, "video"));
    jobject caption = javaOf(new WatchedSurface(sequence, "caption"));
    jobject bml = javaOf(new WatchedSurface(sequence, "bml"));
    jobject screen_info = screenInfo(video, 1, 2, 0, 0);
    jobject cap_info = capInfo(caption, 1, 2, 0, usualLayout());
    jobject bml_info = bmlInfo(bml, 1, 2, 0);

    const std::vector<std::string> released = {"FUNCSTART getRetCode|(param)ret = 0",
                                               "FUNCEND getRetCode|",
                                               "FUNCEND dtvSvLibSetDisplayAll|ret = 0",
                                               "gone bml",
                                               "gone caption",
                                               "gone video"};
};

std::vector<std::string> operator+(std::vector<std::string> first,
                                   const std::vector<std::string>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

TEST_F(SurfaceReferences, EndsAfterTheCommandsLastLineFromItsLastSlot) {
    callNative("DtvSvLib_SetDisplayAll", {3, screen_info, cap_info, bml_info});
    EXPECT_EQ(afterSend(), std::vector<std::string>{"send 1000000b"} + released);
}

/// No command fills the second group; here the service does.
TEST_F(SurfaceReferences, EndsWithItsOtherReferencesFirst) {
    sequence.onSend([this](const dtv::Command& command) {
        auto* references = const_cast<TS_DTVSV_SP*>(command.references);
        const char* const names[] = {"object 0", "object 1", "object 2"};
        for (int slot = 0; slot < 3; ++slot) {
            references->object[slot] = new WatchedObject(sequence, names[slot]);
        }
        references->object_count = 3;
    });
    callNative("DtvSvLib_SetDisplayAll", {3, screen_info, cap_info, bml_info});
    std::vector<std::string> steps = afterSend();
    EXPECT_EQ(steps,
              (std::vector<std::string>{
                  "send 1000000b", "FUNCSTART getRetCode|(param)ret = 0", "FUNCEND getRetCode|",
                  "FUNCEND dtvSvLibSetDisplayAll|ret = 0", "gone object 2", "gone object 1",
                  "gone object 0", "gone bml", "gone caption", "gone video"}));
}

TEST_F(SurfaceReferences, OfACommandThatWaitsEndsAfterItsAnswer) {
    callNative("DtvSvLib_ControlBML_Sync", {3, 0, bml_info});
    std::vector<std::string> steps = afterSend();
    const size_t gone = placeOf(steps, "gone bml");
    EXPECT_LT(placeOf(steps, "FUNCEND dtvSvLibControlBML_Sync|"), gone);
    EXPECT_LT(placeOf(steps, "FUNCEND makeComReplyObjSync|"), gone);
    EXPECT_EQ(gone + 1, steps.size());
    // The others were not in it, and nothing else drops them.
    callNative("DtvSvLib_SetDisplayAll",
               {3, screen_info, cap_info, bmlInfo(javaSurface(0), 1, 2, 0)});
}

/// Also a command that is refused releases after its own line.
TEST_F(SurfaceReferences, OfARefusedCommandEndsAfterItsLine) {
    callNative("DtvSvLib_SetDisplayAll", {3, screen_info, cap_info, nullptr});
    std::vector<std::string> steps = sequence.take();
    const size_t line = placeOf(steps, "FUNCEND getRetCode|");
    EXPECT_LT(line, placeOf(steps, "gone caption"));
    EXPECT_LT(placeOf(steps, "gone caption"), placeOf(steps, "gone video"));
    callNative("DtvSvLib_SetBMLDisplay", {3, bml_info});
}

} // namespace
