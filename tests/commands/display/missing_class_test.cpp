// A Java side that lacks a class: each test loads the bridge into one.
#include "commands/drawing_places.h"

namespace {

using namespace commands;
using namespace harness;

class MissingClass : public CommandTest {
protected:
    void SetUp() override {}
    void load(const std::string& hidden) {
        ASSERT_EQ(Product::loadWithout({hidden}), "");
        service = ServiceDouble::serve();
        log = LogRecorder::install();
    }
};

TEST_F(MissingClass, OfASynchronousAnswer) {
    load("tenrik.service.dtvserver.type.BG_TS_DTVSVLIB_RELEASE_REPLY_SYNC_INFO");
    const char* descriptor = "(I)Ltype/BG_TS_DTVSVLIB_RELEASE_REPLY_SYNC_INFO;";
    service->setReply(fromHex("0900 0000 0500 0000"));
    EXPECT_EQ(run("Release_Sync", descriptor, {3}), "null");
    EXPECT_EQ(sent(), "10000038 sync: 03 00");
    EXPECT_LINES("dtvSvLibRelease_Sync", R"(
        START |hdl = 3
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |RECV, reply_size = 8
        DEBUG |RECV, reply_data.handle = 5
        DEBUG |RECV, reply_data.return_value = 9
        END |ret = 0
        START makeComReplyObjSync|
        START makeComSubReplyObjSync|message_id = 0x10000038
        DEBUG makeComSubReplyObjSync|retvalue = 0
        DEBUG makeComSubReplyObjSync|com_data->handle = 9
        DEBUG makeComSubReplyObjSync|com_data->return_value = 5
        NEWFAIL 209 0
        DEBUG makeComSubReplyObjSync|makeComSubReplyObjSync NG, com ret_call = 1
        START makeComReplyObjSync|make param NG message_id = 0x10000038
        NEWFAIL 209 0
        END makeComReplyObjSync|makeComReplyObjSync CallMethod NG, ret_call = 1)");
    service->setResult(-1);
    EXPECT_EQ(run("Release_Sync", descriptor, {3}), "null");
    EXPECT_LINES("dtvSvLibRelease_Sync", R"(
        START |hdl = 3
        DEBUG |SEND, dtvsv_handle = 3
        START makeComReplyObjSync|
        START makeComReplyObjSync|make param NG message_id = 0x10000038
        NEWFAIL 209 0
        END makeComReplyObjSync|makeComReplyObjSync CallMethod NG, ret_call = 1
        END |ret = -1)");
}

TEST_F(MissingClass, OfSurfaces) {
    load("android.view.Surface");
    jobject info = newObject("BG_TS_DTVSVLIB_BML_DRAWING_INFO", "(Landroid/view/Surface;III)V",
                             {nullptr, 1, 2, 0});
    EXPECT_EQ(run("SetBMLDisplay", {3, info}), "PARAM_NG");
    EXPECT_EQ(sent(), "");
    EXPECT_LINES("dtvSvLibSetBMLDisplay", R"(
        START |hdl = 3
        START setBMLDrawingInfo|
        END setBMLDrawingInfo|
        START setSurface|
        DEBUG setSurface|surface_handle_clazz fieldID is NULL, ret = 1
        RESULT 5)");
}

TEST_F(MissingClass, OfResults) {
    load("tenrik.service.dtvserver.type.BG_TE_DTVSVLIB_RESULT");
    const char* descriptor =
        "(ILtype/BG_TS_DTVSVLIB_BML_DRAWING_INFO;)Ltype/BG_TE_DTVSVLIB_RESULT;";
    EXPECT_EQ(run("SetBMLDisplay", descriptor, {3, nullptr}), "null");
    EXPECT_EQ(sent(), "");
    EXPECT_LINES("dtvSvLibSetBMLDisplay", R"(
        START |hdl = 3
        START getRetCode|(param)ret = 5
        DEBUG getRetCode|class is NULL
        DEBUG |drawing_info_obj is NULL, ret = 5)");
    NativeSurface surface;
    EXPECT_EQ(run("SetBMLDisplay", descriptor, {3, bmlInfo(surface.java(), 1, 2, 0)}), "null");
    EXPECT_EQ(sent(), "1000000e surfaces=1: 03 00 01 00 02 00 00 00");
    EXPECT_EQ(surface.count(), 1);
}

} // namespace
