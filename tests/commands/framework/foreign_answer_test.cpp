// The builders of synchronous answers support ten commands: for any other they log an error and
// return null.
#include "helpers_fixture.h"

namespace {

using namespace harness;
using namespace commands;

class ForeignAnswer : public Helpers {
protected:
    const std::vector<uint8_t> request = fromHex("0300");
    const std::vector<uint8_t> reply = fromHex("0300 0000 07000000 00000000");
};

TEST_F(ForeignAnswer, WithoutReplyAfterTheLastCommand) {
    EXPECT_EQ(syncAnswer(env(), 0x10000042, nullptr, 1, request.data()), nullptr);
    EXPECT_TRACE(log->take(), R"(
        Dtv_jni|128|5|FUNCSTART|makeComReplyObjSync|
        Dtv_jni|128|5|FUNCSTART|makeComReplyObjSync|make param NG message_id = 0x10000042
        Dtv_jni|1024|5|DEBUG    |makeComReplyObjSync|(param)message_id bad err, message_id = 268435522)");
}

TEST_F(ForeignAnswer, WithReplyBeforeTheFirstCommand) {
    EXPECT_EQ(syncAnswer(env(), 0x10000037, reply.data(), 0, request.data()), nullptr);
    EXPECT_TRACE(log->take(), R"(
        Dtv_jni|128|5|FUNCSTART|makeComReplyObjSync|
        Dtv_jni|128|5|FUNCSTART|makeComSubReplyObjSync|message_id = 0x10000037
        Dtv_jni|1024|5|DEBUG    |makeComSubReplyObjSync|retvalue = 0
        Dtv_jni|1024|5|DEBUG    |makeComSubReplyObjSync|com_data->handle = 3
        Dtv_jni|1024|5|DEBUG    |makeComSubReplyObjSync|com_data->return_value = 7
        Dtv_jni|1024|5|DEBUG    |makeComSubReplyObjSync|(param)message_id bad err, message_id = 268435511
        Dtv_jni|128|5|FUNCSTART|makeComReplyObjSync|make param NG message_id = 0x10000037
        Dtv_jni|1024|5|DEBUG    |makeComReplyObjSync|(param)message_id bad err, message_id = 268435511)");
}

} // namespace
