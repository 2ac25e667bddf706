// Keys, permissions and passwords for the data broadcasting browser.
#include "commands/command_test.h"

#include "commands/bml/enum_refusals.h"
#include "commands/bytes.h"

namespace {

using namespace commands;
using namespace harness;

class BrowserAnswer : public CommandTest {
protected:
    static jobject key(int code, int type, int x, int y) {
        return newObject("BG_TS_DTVSVLIB_KEY_CODE_NOTIFY", "(IIII)V", {code, type, x, y});
    }
    static jobject permission(int select, int task) {
        return newObject("BG_TS_DTVSVLIB_PERMISSION_REPLY", "(II)V", {select, task});
    }
    static jobject auth(int select, const Value& pass, const Value& user, int task) {
        return newObject("BG_TS_DTVSVLIB_AUTH_REPLY", "(ILjava/lang/String;Ljava/lang/String;I)V",
                         {select, pass, user, task});
    }
    static jobject auth(const std::string& pass, const std::string& user) {
        return auth(1, pass.c_str(), user.c_str(), 0x01020304);
    }
    void expectRefused(const std::string& name, jobject object, const std::string& lines) {
        EXPECT_EQ(run(name, {3, object}), "PARAM_NG");
        EXPECT_EQ(sent(), "");
        EXPECT_LINES("dtvSvLib" + name, "START |hdl = 3\n" + lines);
    }
    /// The look-up of each number fails; `lines` are those that follow FUNCSTART.
    void expectFieldsNeeded(const std::string& name, jobject object,
                            const std::vector<std::string>& lines) {
        for (size_t field = 0; field < lines.size(); ++field) {
            SCOPED_TRACE(field);
            FailJni missing("GetFieldID", static_cast<int>(field));
            expectRefused(name, object, lines[field]);
        }
    }
    void expectClassNeeded(const std::string& name, jobject object, const std::string& message) {
        FailJni missing("GetObjectClass", 0, FailJni::Leaves::nothing);
        expectRefused(name, object, "RESULT 5\nDEBUG |" + message);
    }
};

// BMLKeyEventNotify.

TEST_F(BrowserAnswer, KeyIsEightBytes) {
    EXPECT_EQ(run("BMLKeyEventNotify", {3, key(24, 2, 70000, 513)}), "OK");
    EXPECT_EQ(sent(), "1000001f: 03 00 18 02 70 11 01 02");
    EXPECT_LINES("dtvSvLibBMLKeyEventNotify", R"(
        START |hdl = 3
        DEBUG |SEND, KEY_CODE_NOTIFY : key_code = 24, key_type = 2, touch_x = 4464, touch_y = 513
        RESULT 0
        END |ret = 0)");
    service->setResult(-1);
    jobject object = key(1, 0, -1, 65536);
    EnumValue code("BG_TE_DTVSVLIB_KEYCODE", "UP", -2);
    EnumValue type("BG_TE_DTVSVLIB_KEY_EVENT_TYPE", "PRESS", 257);
    EXPECT_EQ(run("BMLKeyEventNotify", {0x20004, object}), "NG");
    EXPECT_EQ(sent(), "1000001f: 04 00 fe 01 ff ff 00 00");
    EXPECT_LINES("dtvSvLibBMLKeyEventNotify", R"(
        START |hdl = 131076
        DEBUG |SEND, KEY_CODE_NOTIFY : key_code = 254, key_type = 1, touch_x = 65535, touch_y = 0
        RESULT 1
        END |ret = -1)");
}

TEST_F(BrowserAnswer, KeyRefusals) {
    const std::string name = "BMLKeyEventNotify";
    expectRefused(name, nullptr, "RESULT 5\nDEBUG |key_code_notify_obj is NULL, ret = 5");
    expectRefused(name, key(99, 99, 0, 0), noEnum + "key_code getEnumValue Error, ret = 1");
    expectRefused(name, key(0, 99, 0, 0), noEnum + "key_type getEnumValue Error, ret = 1");
    jobject object = key(0, 0, 0, 0);
    expectClassNeeded(name, object, "key_code_notify class is NULL, ret = 5");
    expectFieldsNeeded(name, object,
                       {noEnumField + "key_code getEnumValue Error, ret = 1",
                        noEnumField + "key_type getEnumValue Error, ret = 1",
                        "RESULT 5\nDEBUG |touch_x fieldID is NULL, ret = 5",
                        "RESULT 5\nDEBUG |touch_y fieldID is NULL, ret = 5"});
}

// BMLPermissionReply.

TEST_F(BrowserAnswer, PermissionIsTwelveBytes) {
    EXPECT_EQ(run("BMLPermissionReply", {3, permission(2, 0x01020304)}), "OK");
    EXPECT_EQ(sent(), "10000020: 03 00 00 00 02 00 00 00 04 03 02 01");
    EXPECT_LINES("dtvSvLibBMLPermissionReply", R"(
        START |hdl = 3
        DEBUG |SEND, PERMISSION_REPLY : task_id = 16909060, select_type = 2
        RESULT 0
        END |ret = 0)");
    service->setResult(4);
    jobject object = permission(1, -2);
    EnumValue select("BG_TE_DTVSVLIB_PERMISSION_SELECT_TYPE", "REFUSE", -1);
    EXPECT_EQ(run("BMLPermissionReply", {0x10003, object}), "NG");
    EXPECT_EQ(sent(), "10000020: 03 00 00 00 ff 00 00 00 fe ff ff ff");
    EXPECT_LINES("dtvSvLibBMLPermissionReply", R"(
        START |hdl = 65539
        DEBUG |SEND, PERMISSION_REPLY : task_id = -2, select_type = 255
        RESULT 1
        END |ret = 4)");
}

TEST_F(BrowserAnswer, PermissionRefusals) {
    const std::string name = "BMLPermissionReply";
    expectRefused(name, nullptr, "RESULT 5\nDEBUG |permission_reply_obj is NULL, ret = 5");
    expectRefused(name, permission(99, 0), noEnum + "select_type getEnumValue Error, ret = 1");
    jobject object = permission(0, 0);
    expectClassNeeded(name, object, "permission_reply class is NULL, ret = 5");
    expectFieldsNeeded(name, object,
                       {"RESULT 5\nDEBUG |task_id fieldID is NULL, ret = 5",
                        noEnumField + "select_type getEnumValue Error, ret = 1"});
}

// BMLAuthReply.

TEST_F(BrowserAnswer, AuthIsFourHundredAndFourBytes) {
    EXPECT_EQ(run("BMLAuthReply", {3, auth("pw", "me!")}), "OK");
    EXPECT_EQ(sent(), "10000021: 03 00 00 00 01 70 77" + bytes("00", 258) + " 6d 65 21" +
                          bytes("00", 132) + " 04 03 02 01");
    EXPECT_EQ(messages.at(0).bytes.size(), 404U);
    EXPECT_LINES("dtvSvLibBMLAuthReply", R"(
        START |hdl = 3
        COPY
        COPY
        DEBUG |SEND, BML_AUTH_REPLY : select_type = 1, user = |me!|, pass = |pw|, task_id = 16909060
        RESULT 0
        END |ret = 0)");
    service->setResult(-1);
    jobject object = auth(0, "", "", -2);
    EnumValue select("BG_TE_DTVSVLIB_AUTH_SELECT_TYPE", "ENTERED", 511);
    EXPECT_EQ(run("BMLAuthReply", {0x10003, object}), "NG");
    EXPECT_EQ(sent(), "10000021: 03 00 00 00 ff" + bytes("00", 395) + " fe ff ff ff");
    EXPECT_LINES("dtvSvLibBMLAuthReply", R"(
        START |hdl = 65539
        COPY
        COPY
        DEBUG |SEND, BML_AUTH_REPLY : select_type = 255, user = ||, pass = ||, task_id = -2
        RESULT 1
        END |ret = -1)");
}

TEST_F(BrowserAnswer, AuthTextsFillTheirFields) {
    EXPECT_EQ(run("BMLAuthReply", {3, auth(std::string(260, 'p'), std::string(132, 'u'))}), "OK");
    EXPECT_EQ(sent(), "10000021: 03 00 00 00 01" + bytes("70", 260) + bytes("75", 132) +
                          " 00 00 00 04 03 02 01");
    EXPECT_LINES("dtvSvLibBMLAuthReply", "START |hdl = 3\nCOPY\nCOPY\n"
                                         "DEBUG |SEND, BML_AUTH_REPLY : select_type = 1, user = |" +
                                             std::string(132, 'u') + "|, pass = |" +
                                             std::string(260, 'p') +
                                             "|, task_id = 16909060\nRESULT 0\nEND |ret = 0");
}

TEST_F(BrowserAnswer, AuthTextsTooLong) {
    const std::string name = "BMLAuthReply";
    expectRefused(name, auth(std::string(261, 'p'), std::string(133, 'u')),
                  "RESULT 5\nDEBUG |pass length is too long : 261, ret = 5");
    expectRefused(name, auth(std::string(260, 'p'), std::string(133, 'u')),
                  "COPY\nRESULT 5\nDEBUG |auth_reply_obj length is too long : 133, ret = 5");
    // 44 characters of three bytes are 132, one more are too many.
    expectRefused(name, auth("", repeated("\xe3\x81\x82", 44) + "a"),
                  "COPY\nRESULT 5\nDEBUG |auth_reply_obj length is too long : 133, ret = 5");
    EXPECT_EQ(run(name, {3, auth("", repeated("\xe3\x81\x82", 44))}), "OK");
    EXPECT_EQ(sent(), "10000021: 03 00 00 00 01" + bytes("00", 260) + bytes("e3 81 82", 44) +
                          " 00 00 00 04 03 02 01");
}

TEST_F(BrowserAnswer, AuthRefusals) {
    const std::string name = "BMLAuthReply";
    expectRefused(name, nullptr, "RESULT 5\nDEBUG |auth_reply_obj is NULL, ret = 5");
    expectRefused(name, auth(99, nullptr, nullptr, 0), "RESULT 5\nDEBUG |pass is NULL, ret = 5");
    expectRefused(name, auth(99, "pw", nullptr, 0), "COPY\nRESULT 5\nDEBUG |user is NULL, ret = 5");
    expectRefused(name, auth(99, "pw", "me", 0),
                  "COPY\nCOPY\n" + noEnum + "select_type getEnumValue Error, ret = 1");
    jobject object = auth("pw", "me");
    expectClassNeeded(name, object, "auth_reply class is NULL, ret = 5");
    expectFieldsNeeded(name, object,
                       {"RESULT 5\nDEBUG |pass fieldID is NULL, ret = 5",
                        "COPY\nRESULT 5\nDEBUG |user fieldID is NULL, ret = 5",
                        "COPY\nCOPY\nRESULT 5\nDEBUG |task_id fieldID is NULL, ret = 5",
                        "COPY\nCOPY\n" + noEnumField + "select_type getEnumValue Error, ret = 1"});
}

TEST_F(BrowserAnswer, AGetterThatThrowsEndsTheCommand) {
    struct Throwing {
        const char* name;
        jobject object;
        int getter;
        const char* lines;
    };
    const Throwing rows[] = {
        {"BMLKeyEventNotify", key(0, 0, 0, 0), 0, ""},
        {"BMLKeyEventNotify", key(0, 0, 0, 0), 1, ""},
        {"BMLPermissionReply", permission(0, 0), 0, ""},
        {"BMLAuthReply", auth("pw", "me"), 0, "COPY\nCOPY"},
    };
    for (const Throwing& row : rows) {
        SCOPED_TRACE(row.name);
        FailJni thrown("CallStaticIntMethodV", row.getter);
        EXPECT_EQ(run(row.name, {3, row.object}), outOfMemory);
        EXPECT_EQ(sent(), "");
        EXPECT_LINES(std::string("dtvSvLib") + row.name,
                     std::string("START |hdl = 3\n") + row.lines);
    }
}

} // namespace
