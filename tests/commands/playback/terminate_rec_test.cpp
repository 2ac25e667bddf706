// The end of a recording, with and without waiting for where it was saved.
#include "commands/command_test.h"

#include "commands/bytes.h"

namespace {

using namespace commands;
using namespace harness;

class TerminateRec : public CommandTest {
protected:
    jobject on = constant("BG_TE_DTVSVLIB_ONOFF", "ON");

    static jobject request(jobject save, int title_size, const Value& title) {
        return newObject("BG_TS_DTVSVLIB_TERMINATE_REC_REQ", {save, title_size, title});
    }
    jobject titled(const std::string& title) { return request(on, 0, title.c_str()); }
};

TEST_F(TerminateRec, IsTwoHundredAndTwoBytes) {
    EXPECT_EQ(run("TerminateRec", {3, request(on, 0, "News")}), "OK");
    EXPECT_EQ(sent(), "1000002f: 03 00 01 00 04 00 4e 65 77 73" + bytes("00", 192));
    EXPECT_EQ(messages.at(0).bytes.size(), 202U);
    EXPECT_FALSE(messages.at(0).had_references);
    EXPECT_LINES("dtvSvLibTerminateRec", R"(
        START |hdl = 3
        COPY
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, TERMINATE_REC : save_data = 1, title_size = 4, title_name = News
        RESULT 0
        END |ret = 0)");
    service->setResult(-1);
    EXPECT_EQ(run("TerminateRec", {0x10003, request(on, 0, "News")}), "NG");
    EXPECT_LINES("dtvSvLibTerminateRec", R"(
        START |hdl = 65539
        COPY
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, TERMINATE_REC : save_data = 1, title_size = 4, title_name = News
        RESULT 1
        END |ret = -1)");
}

TEST_F(TerminateRec, TheTitlesOwnLengthCounts) {
    for (int told : {0, 1, 197, -1, 2147483647}) {
        EXPECT_EQ(run("TerminateRec", {3, request(on, told, "News")}), "OK");
        EXPECT_EQ(sent(), "1000002f: 03 00 01 00 04 00 4e 65 77 73" + bytes("00", 192));
    }
}

TEST_F(TerminateRec, EmptyTitleAndAnyNumberForOn) {
    EnumValue save("BG_TE_DTVSVLIB_ONOFF", "ON", -2);
    EXPECT_EQ(run("TerminateRec", {3, titled("")}), "OK");
    EXPECT_EQ(sent(), "1000002f: 03 00 fe 00 00 00" + bytes("00", 196));
    EXPECT_LINES("dtvSvLibTerminateRec", R"(
        START |hdl = 3
        COPY
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, TERMINATE_REC : save_data = 254, title_size = 0, title_name = )"
                                         R"(
        RESULT 0
        END |ret = 0)");
}

TEST_F(TerminateRec, LongestTitleFillsItsField) {
    EXPECT_EQ(run("TerminateRec", {3, titled(std::string(196, 'x'))}), "OK");
    EXPECT_EQ(sent(), "1000002f: 03 00 01 00 c4 00" + bytes("78", 196));
    EXPECT_LINES("dtvSvLibTerminateRec", R"(
        START |hdl = 3
        COPY
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, TERMINATE_REC : save_data = 1, title_size = 196, title_name = )" +
                                             repeated("x", 196) + R"(
        RESULT 0
        END |ret = 0)");
    EXPECT_EQ(run("TerminateRec", {3, titled(std::string(195, 'x'))}), "OK");
    EXPECT_EQ(sent(), "1000002f: 03 00 01 00 c3 00" + bytes("78", 195) + " 00");
}

TEST_F(TerminateRec, TitlesAreMeasuredInBytes) {
    // 65 characters of three bytes and one of one byte
    EXPECT_EQ(run("TerminateRec", {3, titled(repeated("\xe3\x81\x82", 65) + "a")}), "OK");
    EXPECT_EQ(sent(), "1000002f: 03 00 01 00 c4 00" + bytes("e3 81 82", 65) + " 61");
    EXPECT_EQ(run("TerminateRec", {3, titled(repeated("\xe3\x81\x82", 66))}), "PARAM_NG");
    EXPECT_EQ(sent(), "");
    EXPECT_LINES("dtvSvLibTerminateRec", R"(
        START |hdl = 3
        RESULT 5
        DEBUG |title_name length = 198, ret = 5)");
}

/// A NUL character is two bytes in modified UTF-8, a supplementary one six.
TEST_F(TerminateRec, TitlesAreModifiedUtf8) {
    EXPECT_EQ(run("TerminateRec", {3, titled("a\xc0\x80\xed\xa0\xbd\xed\xb3\xba")}), "OK");
    EXPECT_EQ(sent(), "1000002f: 03 00 01 00 09 00 61 c0 80 ed a0 bd ed b3 ba" + bytes("00", 187));
    EXPECT_LINES("dtvSvLibTerminateRec", R"(
        START |hdl = 3
        COPY
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, TERMINATE_REC : save_data = 1, title_size = 9, title_name = a\xC0\x80\xED\xA0\xBD\xED\xB3\xBA
        RESULT 0
        END |ret = 0)");
}

/// Both commands refuse the same arguments; only what they return differs.
struct Refusing {
    const char* name;
    const char* answer;
    const char* lines;
};
const Refusing refusing[] = {
    {"TerminateRec", "PARAM_NG", "RESULT 5\n"},
    {"TerminateRec_Sync",
     "BG_TS_DTVSVLIB_TERMINATE_REC_SYNC_INFO(5, 3, BG_TS_DTVSVLIB_TERMINATE_REC_REPLY(0, 0))",
     R"(START makeComReplyObjSync|
        START makeComReplyObjSync|make param NG message_id = 0x10000040
        NEW 208 126
        NEW 217 136
        END makeComReplyObjSync|
)"},
};

class TerminateRecRefusal : public TerminateRec, public testing::WithParamInterface<int> {
protected:
    const Refusing& row = refusing[GetParam()];
    void expectRefused(jobject object, const std::string& before, const std::string& after) {
        EXPECT_EQ(run(row.name, {0x10003, object}), row.answer);
        EXPECT_EQ(sent(), "");
        EXPECT_LINES(std::string("dtvSvLib") + row.name,
                     "START |hdl = 65539\n" + before + row.lines + "DEBUG |" + after);
    }
};

INSTANTIATE_TEST_SUITE_P(, TerminateRecRefusal, testing::Values(0, 1),
                         [](const auto& info) { return std::string(refusing[info.param].name); });

TEST_P(TerminateRecRefusal, NullRequest) {
    expectRefused(nullptr, "", "terminate_rec_obj is NULL, ret = 5");
}

TEST_P(TerminateRecRefusal, NullSaveData) {
    expectRefused(request(nullptr, 0, nullptr), "DEBUG getEnumValue|enum object is NULL\n",
                  "save_data getEnumValue Error, ret = 1");
}

TEST_P(TerminateRecRefusal, NullTitle) {
    expectRefused(request(on, 4, nullptr), "", "title_name is NULL, ret = 5");
}

TEST_P(TerminateRecRefusal, TitleTooLong) {
    expectRefused(titled(std::string(197, 'x')), "", "title_name length = 197, ret = 5");
    expectRefused(titled(std::string(70000, 'x')), "", "title_name length = 70000, ret = 5");
}

TEST_P(TerminateRecRefusal, RequestWithoutAClass) {
    FailJni missing("GetObjectClass", 0, FailJni::Leaves::nothing);
    expectRefused(titled("News"), "", "terminate_rec class is NULL, ret = 5");
}

TEST_P(TerminateRecRefusal, RequestWithoutAField) {
    jobject object = titled("News");
    {
        FailJni missing("GetFieldID", 0);
        expectRefused(object, "DEBUG getEnumValue|enum field ID is NULL\n",
                      "save_data getEnumValue Error, ret = 1");
    }
    {
        FailJni missing("GetFieldID", 1);
        expectRefused(object, "", "title_size fieldID is NULL, ret = 5");
    }
    FailJni missing("GetFieldID", 2);
    expectRefused(object, "", "title_name fieldID is NULL, ret = 5");
}

TEST_P(TerminateRecRefusal, GetterThatThrows) {
    FailJni thrown("CallStaticIntMethodV");
    EXPECT_EQ(run(row.name, {3, titled("News")}), outOfMemory);
    EXPECT_EQ(sent(), "");
    EXPECT_LINES(std::string("dtvSvLib") + row.name, "START |hdl = 3");
}

// With waiting.

constexpr const char* syncBegin = R"(
    START |hdl = 3
    COPY
    DEBUG |SEND, dtvsv_handle = 3
    DEBUG |SEND, TERMINATE_REC : save_data = 1, title_size = 4, title_name = News
)";
constexpr const char* syncWithoutReply = R"(
    START makeComReplyObjSync|
    START makeComReplyObjSync|make param NG message_id = 0x10000040
    NEW 208 126
    NEW 217 136
    END makeComReplyObjSync|
)";
/// The lines for the answer 09 00 77 66 88 77 66 55 44 33 22 81 up to the first construction.
constexpr const char* syncReceived = R"(
    DEBUG |RECV, reply_size = 12
    DEBUG |RECV, reply_data.handle = 9
    DEBUG |RECV, reply_data.result = 1432778632
    DEBUG |RECV, reply_data.terminate_rec.program_no = 13124
    DEBUG |RECV, reply_data.terminate_rec.object_no = 33058
    END |ret = 0
    START makeComReplyObjSync|
    START makeComSubReplyObjSync|message_id = 0x10000040
    DEBUG makeComSubReplyObjSync|retvalue = 0
    DEBUG makeComSubReplyObjSync|com_data->handle = 9
    DEBUG makeComSubReplyObjSync|com_data->return_value = 1432778632
    INFO makeComSubReplyObjSync|p_terminate_data->handle = 9
    INFO makeComSubReplyObjSync|p_terminate_data->result = 1432778632
    INFO makeComSubReplyObjSync|p_terminate_data->terminate_rec.program_no = 13124
    INFO makeComSubReplyObjSync|p_terminate_data->terminate_rec.object_no  = 33058
)";
constexpr const char* syncReply = "0900 7766 8877 6655 4433 2281";

class TerminateRecSync : public TerminateRec {
protected:
    std::string runSync() { return run("TerminateRec_Sync", {3, titled("News")}); }
    static std::string object(const std::string& result, const std::string& reply) {
        return "BG_TS_DTVSVLIB_TERMINATE_REC_SYNC_INFO(" + result +
               ", BG_TS_DTVSVLIB_TERMINATE_REC_REPLY(" + reply + "))";
    }
    const std::string command = "10000040 sync: 03 00 01 00 04 00 4e 65 77 73" + bytes("00", 192);
};

#define EXPECT_SYNC_LINES(expected) EXPECT_LINES("dtvSvLibTerminateRec_Sync", expected)

TEST_F(TerminateRecSync, TheAnswerBecomesTheObject) {
    service->setReply(fromHex(syncReply));
    EXPECT_EQ(runSync(), object("1432778632, 9", "13124, 33058"));
    EXPECT_EQ(sent(), command);
    EXPECT_EQ(messages.at(0).reply_capacity, 12);
    EXPECT_SYNC_LINES(std::string(syncBegin) + syncReceived + R"(
        NEW 208 126
        NEW 217 136
        END makeComSubReplyObjSync|
        END makeComReplyObjSync|)");
}

TEST_F(TerminateRecSync, NoAnswerGivesAbort) {
    EXPECT_EQ(runSync(), object("16, 3", "0, 0"));
    EXPECT_EQ(sent(), command);
    EXPECT_SYNC_LINES(std::string(syncBegin) + R"(
        DEBUG |RECV, reply_size = 0
        DEBUG |RECV, reply_data.handle = 0
        DEBUG |RECV, reply_data.result = 0
        DEBUG |RECV, reply_data.terminate_rec.program_no = 0
        DEBUG |RECV, reply_data.terminate_rec.object_no = 0
        END |return DTVSVLIB_RESULT_ABORT_NG
)" + syncWithoutReply);
}

TEST_F(TerminateRecSync, FailedSendGivesOne) {
    service->setResult(-1);
    service->setReply(fromHex(syncReply));
    EXPECT_EQ(runSync(), object("1, 3", "0, 0"));
    EXPECT_EQ(sent(), command);
    EXPECT_SYNC_LINES(std::string(syncBegin) + syncWithoutReply + "END |ret = -1");
}

/// Empty is an answer without bytes and without a handle, which is the first field here.
TEST_F(TerminateRecSync, AnswersOfOddSizes) {
    struct Odd {
        const char* bytes;
        std::optional<int> size;
        const char* result;
        const char* reply;
    };
    const Odd answers[] = {
        {"0100 0000 0000 0000 0000 0000", 0, "0, 1", "0, 0"},
        {"0100 0000 0000 0000 0000 0000", std::nullopt, "0, 1", "0, 0"},
        {"0000 ffff ffff ffff ffff ffff", 0, "16, 3", "0, 0"},
        {"0000 ffff ffff ffff ffff ffff", std::nullopt, "16, 3", "0, 0"},
        {"0000 0000 feff ffff ffff feff", 12, "-2, 0", "65535, 65534"},
        {"0000 0000 0000 0000 0000 0000", 1, "0, 0", "0, 0"},
        {"0000 0000 0000 0000 0000 0000", -1, "0, 0", "0, 0"},
        {"ffff 0000 0700 0000", 8, "7, 65535", "0, 0"},
    };
    for (const Odd& odd : answers) {
        SCOPED_TRACE(odd.bytes);
        service->setReply(fromHex(odd.bytes), odd.size);
        EXPECT_EQ(runSync(), object(odd.result, odd.reply));
        EXPECT_EQ(sent(), command);
    }
}

TEST_F(TerminateRecSync, InnerObjectThatCannotBeBuilt) {
    service->setReply(fromHex(syncReply));
    FailJni fail_once("NewObjectV", 0, FailJni::Leaves::nothing);
    EXPECT_EQ(runSync(), object("0, 3", "0, 0"));
    EXPECT_SYNC_LINES(std::string(syncBegin) + syncReceived + R"(
        NEWFAIL 208 126
        DEBUG makeComSubReplyObjSync|CallMethod NG, ret_call = 1
        START makeComReplyObjSync|make param NG message_id = 0x10000040
        NEW 208 126
        NEW 217 136
        END makeComReplyObjSync|)");
}

TEST_F(TerminateRecSync, ObjectThatCannotBeBuilt) {
    service->setReply(fromHex(syncReply));
    FailJni fail_once("NewObjectV", 1, FailJni::Leaves::nothing);
    EXPECT_EQ(runSync(), object("0, 3", "0, 0"));
    EXPECT_SYNC_LINES(std::string(syncBegin) + syncReceived + R"(
        NEW 208 126
        NEWFAIL 217 136
        DEBUG makeComSubReplyObjSync|makeComSubReplyObjSync NG, com ret_call = 1
        START makeComReplyObjSync|make param NG message_id = 0x10000040
        NEW 208 126
        NEW 217 136
        END makeComReplyObjSync|)");
}

TEST_F(TerminateRecSync, WithoutReplyInnerObjectThatCannotBeBuilt) {
    service->setResult(-1);
    FailJni fail_once("NewObjectV", 0, FailJni::Leaves::nothing);
    EXPECT_EQ(runSync(), "null");
    EXPECT_SYNC_LINES(std::string(syncBegin) + R"(
        START makeComReplyObjSync|
        START makeComReplyObjSync|make param NG message_id = 0x10000040
        NEWFAIL 208 126
        END makeComReplyObjSync|makeComReplyObjSync terminate rec CallMethod NG, ret_call = 1
        END |ret = -1)");
}

TEST_F(TerminateRecSync, WithoutReplyAConstructorThatThrowsEndsTheAnswer) {
    service->setResult(-1);
    FailJni fail_once("NewObjectV");
    EXPECT_EQ(runSync(), outOfMemory);
    EXPECT_SYNC_LINES(std::string(syncBegin) + R"(
        START makeComReplyObjSync|
        START makeComReplyObjSync|make param NG message_id = 0x10000040
        NEWFAIL 208 126)");
}

TEST_F(TerminateRecSync, WithoutReplyObjectThatCannotBeBuilt) {
    service->setResult(-1);
    FailJni fail_once("NewObjectV", 1, FailJni::Leaves::nothing);
    EXPECT_EQ(runSync(), "null");
    EXPECT_SYNC_LINES(std::string(syncBegin) + R"(
        START makeComReplyObjSync|
        START makeComReplyObjSync|make param NG message_id = 0x10000040
        NEW 208 126
        NEWFAIL 217 136
        END makeComReplyObjSync|makeComReplyObjSync CallMethod NG, ret_call = 1
        END |ret = -1)");
}

TEST_F(TerminateRecSync, AConstructorThatThrowsEndsTheAnswer) {
    service->setReply(fromHex(syncReply));
    {
        FailJni fail_once("NewObjectV");
        EXPECT_EQ(runSync(), outOfMemory);
        EXPECT_SYNC_LINES(std::string(syncBegin) + syncReceived + "NEWFAIL 208 126");
    }
    {
        FailJni fail_once("NewObjectV", 1);
        EXPECT_EQ(runSync(), outOfMemory);
        EXPECT_SYNC_LINES(std::string(syncBegin) + syncReceived + "NEW 208 126\nNEWFAIL 217 136");
    }
    service->setResult(1);
    FailJni fail_once("NewObjectV", 1);
    EXPECT_EQ(runSync(), outOfMemory);
    EXPECT_SYNC_LINES(std::string(syncBegin) + R"(
        START makeComReplyObjSync|
        START makeComReplyObjSync|make param NG message_id = 0x10000040
        NEW 208 126
        NEWFAIL 217 136)");
}

} // namespace
