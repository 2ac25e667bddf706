// Answers with data for the data broadcasting browser: pictures, entered text, stored values.
#include "commands/command_test.h"

#include "commands/bml/enum_refusals.h"
#include "commands/bytes.h"

namespace {

using namespace commands;
using namespace harness;

class BrowserData : public CommandTest {
protected:
    jobject on = constant("BG_TE_DTVSVLIB_ONOFF", "ON");
    jobject off = constant("BG_TE_DTVSVLIB_ONOFF", "OFF");
    jobject card = constant("BG_TE_DTVSVLIB_RECORDING_MEDIUM", "CARD");

    static jobject picture(jobject save, jobject medium, jobject change, const Value& name) {
        return newObject("BG_TS_DTVSVLIB_SAVE_PICTURE_REPLY", {save, medium, change, name});
    }
    jobject picture(const std::string& name) { return picture(on, card, off, name.c_str()); }
    static jobject fep(int end_type, int size, const Value& data) {
        return newObject("BG_TS_DTVSVLIB_START_FEP_REPLY", "(IILjava/lang/String;)V",
                         {end_type, size, data});
    }
    static jobject nvram(int end_type, const Value& name, jobject data) {
        return newObject("BG_TS_DTVSVLIB_READ_NVRAM_REPLY", "(ILjava/lang/String;[B)V",
                         {end_type, name, data});
    }
    void expectRefused(const std::string& name, jobject object, const std::string& lines) {
        EXPECT_EQ(run(name, {3, object}), "PARAM_NG");
        EXPECT_EQ(sent(), "");
        EXPECT_LINES("dtvSvLib" + name, "START |hdl = 3\n" + lines);
    }
    void expectFieldsNeeded(const std::string& name, jobject object,
                            const std::vector<std::string>& lines) {
        for (size_t field = 0; field < lines.size(); ++field) {
            SCOPED_TRACE(field);
            FailJni missing("GetFieldID", static_cast<int>(field));
            expectRefused(name, object, lines[field]);
        }
    }
};

// BMLSavePictureReply.

TEST_F(BrowserData, PictureIsSevenHundredAndEightySixBytes) {
    EXPECT_EQ(run("BMLSavePictureReply", {3, picture(on, card, off, "a.jpg")}), "OK");
    EXPECT_EQ(sent(), "1000002a: 03 00 01 01 00 00 61 2e 6a 70 67" + bytes("00", 775));
    EXPECT_EQ(messages.at(0).bytes.size(), 786U);
    EXPECT_LINES("dtvSvLibBMLSavePictureReply", R"(
        START |hdl = 3
        COPY
        DEBUG |SEND, BML_SAVE_PICTURE_REPLY : save_flag = 1, medium = 1, change_filename = 0, filename = |a.jpg|
        RESULT 0
        END |ret = 0)");
    service->setResult(-1);
    EnumValue flag("BG_TE_DTVSVLIB_ONOFF", "OFF", -2);
    EnumValue medium("BG_TE_DTVSVLIB_RECORDING_MEDIUM", "CARD", 1000);
    EXPECT_EQ(run("BMLSavePictureReply", {0x10003, picture(off, card, on, "")}), "NG");
    EXPECT_EQ(sent(), "1000002a: 03 00 fe e8 01" + bytes("00", 781));
    EXPECT_LINES("dtvSvLibBMLSavePictureReply", R"(
        START |hdl = 65539
        COPY
        DEBUG |SEND, BML_SAVE_PICTURE_REPLY : save_flag = 254, medium = 232, change_filename = 1, filename = ||
        RESULT 1
        END |ret = -1)");
}

TEST_F(BrowserData, PictureNames) {
    EXPECT_EQ(run("BMLSavePictureReply", {3, picture(std::string(779, 'n'))}), "OK");
    EXPECT_EQ(sent(), "1000002a: 03 00 01 01 00 00" + bytes("6e", 779) + " 00");
    EXPECT_LINES("dtvSvLibBMLSavePictureReply",
                 "START |hdl = 3\nCOPY\nDEBUG |SEND, BML_SAVE_PICTURE_REPLY : save_flag = 1, "
                 "medium = 1, change_filename = 0, filename = |" +
                     std::string(779, 'n') + "|\nRESULT 0\nEND |ret = 0");
    expectRefused("BMLSavePictureReply", picture(std::string(780, 'n')),
                  "RESULT 5\nDEBUG |filename too long : 780, ret = 5");
    expectRefused("BMLSavePictureReply", picture(repeated("\xe3\x81\x82", 260)),
                  "RESULT 5\nDEBUG |filename too long : 780, ret = 5");
}

TEST_F(BrowserData, PictureRefusals) {
    const std::string name = "BMLSavePictureReply";
    expectRefused(name, nullptr, "RESULT 5\nDEBUG |picture_info_obj is NULL, ret = 5");
    expectRefused(name, picture(nullptr, nullptr, nullptr, nullptr),
                  noEnum + "save_flag getEnumValue Error, ret = 1");
    expectRefused(name, picture(on, nullptr, nullptr, nullptr),
                  noEnum + "medium getEnumValue Error, ret = 1");
    expectRefused(name, picture(on, card, nullptr, nullptr),
                  noEnum + "change_filename getEnumValue Error, ret = 1");
    expectRefused(name, picture(on, card, on, nullptr),
                  "RESULT 5\nDEBUG |filename is NULL, ret = 5");
    jobject object = picture("a.jpg");
    {
        FailJni missing("GetObjectClass", 0, FailJni::Leaves::nothing);
        expectRefused(name, object, "RESULT 5\nDEBUG |picture_info class is NULL, ret = 5");
    }
    expectFieldsNeeded(name, object,
                       {noEnumField + "save_flag getEnumValue Error, ret = 1",
                        noEnumField + "medium getEnumValue Error, ret = 1",
                        noEnumField + "change_filename getEnumValue Error, ret = 1",
                        "RESULT 5\nDEBUG |filename_fid is NULL, ret = 5"});
}

// BMLFepReply.

TEST_F(BrowserData, FepIsNineteenHundredAndThirtySixBytes) {
    EXPECT_EQ(run("BMLFepReply", {3, fep(1, 0x01020304, "hello")}), "OK");
    EXPECT_EQ(sent(),
              "10000024: 03 00 00 00 01 00 00 00 04 03 02 01 68 65 6c 6c 6f" + bytes("00", 1919));
    EXPECT_EQ(messages.at(0).bytes.size(), 1936U);
    EXPECT_LINES("dtvSvLibBMLFepReply", R"(
        START |hdl = 3
        COPY
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, BML_FEP_REPLY : data = |hello|, data_size = 16909060, end_type = 1
        RESULT 0
        END |ret = 0)");
    service->setResult(-1);
    jobject object = fep(0, -2, "");
    EnumValue end("BG_TE_DTVSVLIB_FEP_END_TYPE", "ENTERED", -1);
    EXPECT_EQ(run("BMLFepReply", {0x10003, object}), "NG");
    EXPECT_EQ(sent(), "10000024: 03 00 00 00 ff 00 00 00 fe ff ff ff" + bytes("00", 1924));
    EXPECT_LINES("dtvSvLibBMLFepReply", R"(
        START |hdl = 65539
        COPY
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, BML_FEP_REPLY : data = ||, data_size = -2, end_type = 255
        RESULT 1
        END |ret = -1)");
}

TEST_F(BrowserData, FepWithoutAReadableEndSendsTheSizesLowByte) {
    EXPECT_EQ(run("BMLFepReply", {3, fep(99, 0x1234, "x")}), "OK");
    EXPECT_EQ(sent(), "10000024: 03 00 00 00 34 00 00 00 34 12 00 00 78" + bytes("00", 1923));
    EXPECT_LINES("dtvSvLibBMLFepReply", R"(
        START |hdl = 3
        COPY
        DEBUG getEnumValue|enum object is NULL
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, BML_FEP_REPLY : data = |x|, data_size = 4660, end_type = 52
        RESULT 0
        END |ret = 0)");
    FailJni missing("GetFieldID", 2);
    EXPECT_EQ(run("BMLFepReply", {3, fep(0, -1, "x")}), "OK");
    EXPECT_EQ(sent(), "10000024: 03 00 00 00 ff 00 00 00 ff ff ff ff 78" + bytes("00", 1923));
    EXPECT_LINES("dtvSvLibBMLFepReply", R"(
        START |hdl = 3
        COPY
        DEBUG getEnumValue|enum field ID is NULL
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, BML_FEP_REPLY : data = |x|, data_size = -1, end_type = 255
        RESULT 0
        END |ret = 0)");
}

TEST_F(BrowserData, FepGetterThatThrowsEndsTheCommand) {
    FailJni thrown("CallStaticIntMethodV");
    EXPECT_EQ(run("BMLFepReply", {3, fep(0, 1, "x")}), outOfMemory);
    EXPECT_EQ(sent(), "");
    EXPECT_LINES("dtvSvLibBMLFepReply", "START |hdl = 3\nCOPY");
}

TEST_F(BrowserData, FepTexts) {
    EXPECT_EQ(run("BMLFepReply", {3, fep(0, 0, std::string(1924, 'd').c_str())}), "OK");
    EXPECT_EQ(sent(), "10000024: 03 00" + bytes("00", 10) + bytes("64", 1924));
    EXPECT_LINES("dtvSvLibBMLFepReply",
                 "START |hdl = 3\nCOPY\nDEBUG |SEND, dtvsv_handle = 3\n"
                 "DEBUG |SEND, BML_FEP_REPLY : data = |" +
                     std::string(1924, 'd') +
                     "|, data_size = 0, end_type = 0\nRESULT 0\nEND |ret = 0");
    EXPECT_EQ(run("BMLFepReply", {3, fep(0, 0, std::string(1923, 'd').c_str())}), "OK");
    EXPECT_EQ(sent(), "10000024: 03 00" + bytes("00", 10) + bytes("64", 1923) + " 00");
    expectRefused("BMLFepReply", fep(99, 0, std::string(1925, 'd').c_str()),
                  "RESULT 5\nDEBUG |data length is too long : 1925, ret = 5");
    expectRefused("BMLFepReply", fep(0, 0, repeated("\xe3\x81\x82", 642).c_str()),
                  "RESULT 5\nDEBUG |data length is too long : 1926, ret = 5");
}

TEST_F(BrowserData, FepRefusals) {
    const std::string name = "BMLFepReply";
    expectRefused(name, nullptr, "RESULT 5\nDEBUG |start_fep_reply_obj is NULL, ret = 5");
    expectRefused(name, fep(0, 0, nullptr), "RESULT 5\nDEBUG |data is NULL, ret = 5");
    jobject object = fep(0, 0, "x");
    {
        FailJni missing("GetObjectClass", 0, FailJni::Leaves::nothing);
        expectRefused(name, object, "RESULT 5\nDEBUG |start_fep_reply class is NULL, ret = 5");
    }
    expectFieldsNeeded(name, object,
                       {"RESULT 5\nDEBUG |data fieldID is NULL, ret = 5",
                        "COPY\nRESULT 5\nDEBUG |data_size fieldID is NULL, ret = 5"});
}

// BMLReadNvramReply.

std::vector<int> counting(int count) {
    std::vector<int> values;
    for (int i = 0; i < count; ++i) {
        values.push_back(i + 1);
    }
    return values;
}

TEST_F(BrowserData, NvramIsAHundredAndTwelveBytes) {
    EXPECT_EQ(run("BMLReadNvramReply", {3, nvram(1, "ts", newBytes({1, -2, 127}))}), "OK");
    EXPECT_EQ(sent(), "10000023: 03 00 01 74 73" + bytes("00", 42) + " 01 fe 7f" + bytes("00", 62));
    EXPECT_EQ(messages.at(0).bytes.size(), 112U);
    EXPECT_LINES("dtvSvLibBMLReadNvramReply", R"(
        START |hdl = 3
        COPY
        DEBUG |SEND, READ_NVRAM_REPLY : bml_end_type = 1, ts_name = ts
        RESULT 0
        END |ret = 0)");
    service->setResult(-1);
    jobject object = nvram(0, "", newBytes({}));
    EnumValue end("BG_TE_DTVSVLIB_BML_END_TYPE", "OK", -1);
    EXPECT_EQ(run("BMLReadNvramReply", {0x10003, object}), "NG");
    EXPECT_EQ(sent(), "10000023: 03 00 ff" + bytes("00", 109));
    EXPECT_LINES("dtvSvLibBMLReadNvramReply", std::string(R"(
        START |hdl = 65539
        COPY
        DEBUG |SEND, READ_NVRAM_REPLY : bml_end_type = 255, ts_name = )") +
                                                  R"(
        RESULT 1
        END |ret = -1)");
}

TEST_F(BrowserData, NvramTakesSixtyFourBytes) {
    EXPECT_EQ(run("BMLReadNvramReply", {3, nvram(0, "ts", newBytes(counting(64)))}), "OK");
    EXPECT_EQ(sent(), "10000023: 03 00 00 74 73" + bytes("00", 42) +
                          " 01 02 03 04 05 06 07 08 09 0a 0b 0c 0d 0e 0f 10"
                          " 11 12 13 14 15 16 17 18 19 1a 1b 1c 1d 1e 1f 20"
                          " 21 22 23 24 25 26 27 28 29 2a 2b 2c 2d 2e 2f 30"
                          " 31 32 33 34 35 36 37 38 39 3a 3b 3c 3d 3e 3f 40 00");
    expectRefused("BMLReadNvramReply", nvram(0, "ts", newBytes(counting(65))),
                  "COPY\nRESULT 5\nDEBUG |ERROR nvram_data size is over, size = 65");
}

TEST_F(BrowserData, NvramNamesAreCut) {
    EXPECT_EQ(run("BMLReadNvramReply", {3, nvram(0, std::string(43, 'n').c_str(), newBytes({9}))}),
              "OK");
    EXPECT_EQ(sent(), "10000023: 03 00 00" + bytes("6e", 43) + " 00 09" + bytes("00", 64));
    for (int length : {44, 45, 300}) {
        std::string name(static_cast<size_t>(length), 'n');
        EXPECT_EQ(run("BMLReadNvramReply", {3, nvram(0, name.c_str(), newBytes({9}))}), "OK");
        EXPECT_EQ(sent(), "10000023: 03 00 00" + bytes("6e", 44) + " 09" + bytes("00", 64));
        EXPECT_LINES("dtvSvLibBMLReadNvramReply",
                     "START |hdl = 3\nCOPY\n"
                     "DEBUG |SEND, READ_NVRAM_REPLY : bml_end_type = 0, ts_name = "
                     "nnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnnn\nRESULT 0\nEND |ret = 0");
    }
}

/// Its messages begin with the word ERROR, but are of the level DEBUG and reach no other output.
TEST_F(BrowserData, NvramRefusals) {
    const std::string name = "BMLReadNvramReply";
    StdoutCapture output;
    expectRefused(name, nullptr, "RESULT 5\nDEBUG |ERROR bml_nvram_clazz is null, ret = 5");
    expectRefused(name, nvram(99, nullptr, nullptr),
                  noEnum + "bml_end_type getEnumValue Error, ret = 1");
    expectRefused(name, nvram(0, nullptr, nullptr),
                  "RESULT 5\nDEBUG |ERROR bml_nvram object is null");
    expectRefused(name, nvram(0, "ts", nullptr),
                  "COPY\nRESULT 5\nDEBUG |ERROR nvram_data object is null");
    jobject object = nvram(0, "ts", newBytes({1}));
    {
        FailJni missing("GetObjectClass", 0, FailJni::Leaves::nothing);
        expectRefused(name, object, "RESULT 5\nDEBUG |ERROR bml_nvram_clazz is null, ret = 5");
    }
    expectFieldsNeeded(name, object,
                       {noEnumField + "bml_end_type getEnumValue Error, ret = 1",
                        "RESULT 5\nDEBUG |ERROR ts_name field ID is null",
                        "COPY\nRESULT 5\nDEBUG |ERROR nvram_data field ID is null"});
    EXPECT_EQ(output.take(), "");
}

TEST_F(BrowserData, AGetterThatThrowsEndsTheCommand) {
    for (int getter : {0, 1, 2}) {
        FailJni thrown("CallStaticIntMethodV", getter);
        EXPECT_EQ(run("BMLSavePictureReply", {3, picture("a")}), outOfMemory);
        EXPECT_EQ(sent(), "");
        EXPECT_LINES("dtvSvLibBMLSavePictureReply", "START |hdl = 3");
    }
    FailJni thrown("CallStaticIntMethodV");
    EXPECT_EQ(run("BMLReadNvramReply", {3, nvram(0, "ts", newBytes({1}))}), outOfMemory);
    EXPECT_EQ(sent(), "");
    EXPECT_LINES("dtvSvLibBMLReadNvramReply", "START |hdl = 3");
}

/// Mode 0 copies the elements back and frees a copy that the VM made.
TEST_F(BrowserData, ElementsAreReleasedWithModeZero) {
    std::vector<std::vector<long long>> released;
    ObservedJni observed([&released](const JniCall& call) {
        if (std::string(call.function) == "ReleaseByteArrayElements") {
            released.push_back(call.numbers);
        }
    });
    EXPECT_EQ(run("BMLReadNvramReply", {3, nvram(0, "ts", newBytes({1, 2, 3}))}), "OK");
    EXPECT_EQ(released, (std::vector<std::vector<long long>>{{0}}));
    EXPECT_EQ(run("BMLReadNvramReply", {3, nvram(0, "ts", newBytes(std::vector<int>(65)))}),
              "PARAM_NG");
    EXPECT_EQ(released, (std::vector<std::vector<long long>>{{0}, {0}}));
}

} // namespace
