// The bound of the delays before any session has been created: each test needs a process of its
// own.
#include "commands/command_rows.h"

namespace {

using namespace harness;
using namespace commands;

class BeforeAnyCreation : public Commands {
protected:
    void expectBoundOfNothing() {
        EXPECT_EQ(call("DtvSvLib_SetSoundVideoDelay", {3, 1, 0}), param_ng);
        EXPECT_TRACE(log->take(), refusedTrace("dtvSvLibSetSoundVideoDelay", "hdl = 3",
                                               "video_viltime is too large : 1, max_delat_time = 0,"
                                               " ret = 5"));
        EXPECT_EQ(call("DtvSvLib_SetSoundVideoDelay", {3, 0, 1}), param_ng);
        EXPECT_TRACE(log->take(), refusedTrace("dtvSvLibSetSoundVideoDelay", "hdl = 3",
                                               "audio_viltime is too large : 1, max_delat_time = 0,"
                                               " ret = 5"));
        EXPECT_EQ(service->takeTexts(), Texts{});
        EXPECT_EQ(call("DtvSvLib_SetSoundVideoDelay", {3, 0, 0}), ok);
        EXPECT_EQ(service->takeTexts(), Texts{"10000015: 03 00 00 00 00 00"});
        EXPECT_TRACE(log->take(),
                     sentTrace("dtvSvLibSetSoundVideoDelay", "hdl = 3",
                               {"SEND, dtvsv_handle = 3, video_viltime = 0, audio_viltime = 0, "
                                "max_delay_time = 0"},
                               "0", "0"));
    }
};

TEST_F(BeforeAnyCreation, TheBoundIsZero) {
    log->clear();
    expectBoundOfNothing();
}

TEST_F(BeforeAnyCreation, ARefusedCreationSetsNoBound) {
    EXPECT_EQ(call("DtvSvLib_Create", {5, 20}), param_ng);
    log->clear();
    expectBoundOfNothing();
}

} // namespace
