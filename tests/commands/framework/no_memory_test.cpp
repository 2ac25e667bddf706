// Texts and arrays of an argument that the VM has no memory for. A VM that throws leaves its
// exception to the caller; several VMs answer null and throw nothing: nothing may be sent then, as
// the service would take an empty text for what the viewer entered.
#include "commands/command_test.h"

#include "commands/drawing_places.h"

namespace {

using namespace commands;
using namespace harness;

class NoMemory : public CommandTest {
protected:
    void expectRefused(const std::string& name, jobject object, const char* function,
                       int let_through, const std::string& message) {
        SCOPED_TRACE(name + ", " + message);
        const std::vector<Value> arguments = name == "BMLStartTvLinkReq"
                                                 ? std::vector<Value>{3, 0, object}
                                                 : std::vector<Value>{3, object};
        {
            FailJni fail(function, let_through, FailJni::Leaves::nothing);
            EXPECT_EQ(run(name, arguments), "PARAM_NG");
            EXPECT_TRUE(fail.fired());
        }
        EXPECT_EQ(sent(), "");
        const std::vector<TraceLine> lines = log->take();
        ASSERT_FALSE(lines.empty());
        EXPECT_EQ(lines.back().literal(),
                  "Dtv_jni|1024|5|DEBUG    |dtvSvLib" + name + "|" + message);
        {
            FailJni fail(function, let_through);
            EXPECT_EQ(run(name, arguments), outOfMemory);
        }
        EXPECT_EQ(sent(), "");
        EXPECT_EQ(run(name, arguments), "OK");
        EXPECT_NE(sent(), "");
        log->clear();
    }
};

TEST_F(NoMemory, ForATextOfTheBrowser) {
    jobject auth = newObject("BG_TS_DTVSVLIB_AUTH_REPLY",
                             "(ILjava/lang/String;Ljava/lang/String;I)V", {1, "pw", "me", 7});
    expectRefused("BMLAuthReply", auth, "GetStringUTFChars", 0, "pass is NULL, ret = 5");
    expectRefused("BMLAuthReply", auth, "GetStringUTFChars", 1, "user is NULL, ret = 5");
    expectRefused(
        "BMLFepReply",
        newObject("BG_TS_DTVSVLIB_START_FEP_REPLY", "(IILjava/lang/String;)V", {0, 5, "hello"}),
        "GetStringUTFChars", 0, "data is NULL, ret = 5");
    jobject on = constant("BG_TE_DTVSVLIB_ONOFF", "ON");
    jobject medium = constant("BG_TE_DTVSVLIB_RECORDING_MEDIUM", "CARD");
    expectRefused("BMLSavePictureReply",
                  newObject("BG_TS_DTVSVLIB_SAVE_PICTURE_REPLY", {on, medium, on, "a.jpg"}),
                  "GetStringUTFChars", 0, "filename is NULL, ret = 5");
    jobject block = newObject("BG_TS_DTVSVLIB_READ_NVRAM_REPLY", "(ILjava/lang/String;[B)V",
                              {0, "ts", newBytes({1, 2})});
    expectRefused("BMLReadNvramReply", block, "GetStringUTFChars", 0,
                  "ERROR bml_nvram object is null");
    expectRefused("BMLReadNvramReply", block, "GetByteArrayElements", 0,
                  "ERROR nvram_data object is null");
}

TEST_F(NoMemory, ForWhatStartsATvLink) {
    NativeSurface surface;
    jobject link =
        newObject("BG_TS_DTVSVLIB_BML_START_INFO", {1, 2, newBytes({1, 2, 3, 4, 5, 6}), "http://x",
                                                    bmlInfo(surface.java(), 240, 427, 2)});
    expectRefused("BMLStartTvLinkReq", link, "GetByteArrayElements", 0,
                  "affiliation_id_array is NULL, ret = 5");
    expectRefused("BMLStartTvLinkReq", link, "GetStringUTFChars", 0,
                  "bookmark_url object is NULL, ret = 5");
    EXPECT_EQ(surface.count(), 1);
}

TEST_F(NoMemory, ForTheTitleOfARecording) {
    jobject on = constant("BG_TE_DTVSVLIB_ONOFF", "ON");
    expectRefused("TerminateRec", newObject("BG_TS_DTVSVLIB_TERMINATE_REC_REQ", {on, 4, "News"}),
                  "GetStringUTFChars", 0, "title_name is NULL, ret = 5");
}

/// An empty text is sent as before.
TEST_F(NoMemory, AnEmptyTextIsNoFailure) {
    jobject block = newObject("BG_TS_DTVSVLIB_READ_NVRAM_REPLY", "(ILjava/lang/String;[B)V",
                              {0, "", newBytes({1, 2})});
    EXPECT_EQ(run("BMLReadNvramReply", {3, block}), "OK");
    EXPECT_EQ(run("BMLFepReply", {3, newObject("BG_TS_DTVSVLIB_START_FEP_REPLY",
                                               "(IILjava/lang/String;)V", {0, 5, ""})}),
              "OK");
}

} // namespace
