// Playing a recorded programme: start, speed and skip.
#include "commands/command_test.h"

namespace {

using namespace commands;
using namespace harness;

constexpr const char* onOffClass = "BG_TE_DTVSVLIB_ONOFF";
constexpr const char* mediumClass = "BG_TE_DTVSVLIB_RECORDING_MEDIUM";
constexpr const char* directionClass = "BG_TE_DTVSVLIB_PLAY_DIRECTION";

class Play : public CommandTest {
protected:
    jobject on = constant(onOffClass, "ON");
    jobject off = constant(onOffClass, "OFF");
    jobject card = constant(mediumClass, "CARD");
    jobject forward = constant(directionClass, "FORWARD");
    jobject backward = constant(directionClass, "BACKWARD");

    static jobject startPlay(jobject medium, int program, jobject resume, int interval,
                             jobject pause) {
        return newObject("BG_TS_DTVSVLIB_START_PLAY", {medium, program, resume, interval, pause});
    }
    static jobject speed(jobject direction, int numerator, int denominator) {
        return newObject("BG_TS_DTVSVLIB_SPECIAL_PLAY", {direction, numerator, denominator});
    }
    static jobject skip(jobject direction, int seconds) {
        return newObject("BG_TS_DTVSVLIB_SKIP_PLAY", {direction, seconds});
    }
    void expectRefused(const std::string& name, jobject object, const std::string& lines) {
        EXPECT_EQ(run(name, {3, object}), "PARAM_NG");
        EXPECT_EQ(sent(), "");
        EXPECT_LINES("dtvSvLib" + name, "START |hdl = 3\n" + lines);
    }
};

const std::string noEnum = "DEBUG getEnumValue|enum object is NULL\nRESULT 5\nDEBUG |";
const std::string noEnumField = "DEBUG getEnumValue|enum field ID is NULL\nRESULT 5\nDEBUG |";

// StartPlay.

TEST_F(Play, StartIsTwelveBytes) {
    jobject object = startPlay(card, 513, on, 772, off);
    EXPECT_EQ(run("StartPlay", {3, object}), "OK");
    EXPECT_EQ(sent(), "10000030: 03 00 01 00 01 02 01 00 04 03 00 00");
    EXPECT_FALSE(messages.at(0).had_references);
    EXPECT_LINES("dtvSvLibStartPlay", R"(
        START |hdl = 3
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, START_PLAY : medium = 1, program_number = 513, resume = 1, interval = 772, pause = 0
        RESULT 0
        END |ret = 0)");
    service->setResult(-1);
    EXPECT_EQ(run("StartPlay", {3, startPlay(card, 513, off, 772, on)}), "NG");
    EXPECT_EQ(sent(), "10000030: 03 00 01 00 01 02 00 00 04 03 01 00");
    EXPECT_LINES("dtvSvLibStartPlay", R"(
        START |hdl = 3
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, START_PLAY : medium = 1, program_number = 513, resume = 0, interval = 772, pause = 1
        RESULT 1
        END |ret = -1)");
}

TEST_F(Play, StartTakesTheLowBits) {
    jobject object = startPlay(card, 70000, on, -1, off);
    EnumValue medium(mediumClass, "CARD", 258);
    EnumValue resume(onOffClass, "ON", -1);
    EnumValue pause(onOffClass, "OFF", 511);
    EXPECT_EQ(run("StartPlay", {0x54321, object}), "OK");
    EXPECT_EQ(sent(), "10000030: 21 43 02 00 70 11 ff 00 ff ff ff 00");
    EXPECT_LINES("dtvSvLibStartPlay", R"(
        START |hdl = 344865
        DEBUG |SEND, dtvsv_handle = 17185
        DEBUG |SEND, START_PLAY : medium = 2, program_number = 4464, resume = 255, interval = 65535, pause = 255
        RESULT 0
        END |ret = 0)");
}

TEST_F(Play, StartRefusals) {
    expectRefused("StartPlay", nullptr, "RESULT 5\nDEBUG |start_play_obj is NULL, ret = 5");
    expectRefused("StartPlay", startPlay(nullptr, 1, nullptr, 1, nullptr),
                  noEnum + "start_play getEnumValue Error, ret = 1");
    expectRefused("StartPlay", startPlay(card, 1, nullptr, 1, nullptr),
                  noEnum + "resume getEnumValue Error, ret = 1");
    expectRefused("StartPlay", startPlay(card, 1, on, 1, nullptr),
                  noEnum + "pause getEnumValue Error, ret = 1");
    jobject object = startPlay(card, 1, on, 1, off);
    {
        FailJni missing("GetObjectClass", 0, FailJni::Leaves::nothing);
        expectRefused("StartPlay", object, "RESULT 5\nDEBUG |start_play class is NULL, ret = 5");
    }
    const std::string fields[] = {
        noEnumField + "start_play getEnumValue Error, ret = 1",
        noEnumField + "resume getEnumValue Error, ret = 1",
        noEnumField + "pause getEnumValue Error, ret = 1",
        "RESULT 5\nDEBUG |program_number fieldID is NULL, ret = 5",
        "RESULT 5\nDEBUG |interval fieldID is NULL, ret = 5",
    };
    for (int field = 0; field < 5; ++field) {
        SCOPED_TRACE(field);
        FailJni missing("GetFieldID", field);
        expectRefused("StartPlay", object, fields[field]);
    }
}

TEST_F(Play, AGetterThatThrowsEndsTheCommand) {
    struct Throwing {
        const char* name;
        jobject object;
        int getters;
    };
    const Throwing rows[] = {
        {"StartPlay", startPlay(card, 1, on, 1, off), 3},
        {"ChangePlaySpeed", speed(forward, 2, 1), 1},
        {"SkipPlay", skip(forward, 1), 1},
    };
    for (const Throwing& row : rows) {
        for (int getter = 0; getter < row.getters; ++getter) {
            SCOPED_TRACE(row.name);
            FailJni thrown("CallStaticIntMethodV", getter);
            EXPECT_EQ(run(row.name, {3, row.object}), outOfMemory);
            EXPECT_EQ(sent(), "");
            EXPECT_LINES(std::string("dtvSvLib") + row.name, "START |hdl = 3");
        }
    }
}

// ChangePlaySpeed.

TEST_F(Play, SpeedIsEightBytes) {
    EXPECT_EQ(run("ChangePlaySpeed", {3, speed(backward, 240, 2)}), "OK");
    EXPECT_EQ(sent(), "10000031: 03 00 01 00 f0 00 02 00");
    EXPECT_LINES("dtvSvLibChangePlaySpeed", R"(
        START |hdl = 3
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, SPECIAL_PLAY : direction = 1, numerator = 240, denominator = 2
        RESULT 0
        END |ret = 0)");
    service->setResult(1);
    EXPECT_EQ(run("ChangePlaySpeed", {3, speed(forward, 2, 1)}), "NG");
    EXPECT_EQ(sent(), "10000031: 03 00 00 00 02 00 01 00");
    EXPECT_LINES("dtvSvLibChangePlaySpeed", R"(
        START |hdl = 3
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, SPECIAL_PLAY : direction = 0, numerator = 2, denominator = 1
        RESULT 1
        END |ret = 1)");
}

TEST_F(Play, SpeedsThatAreSent) {
    struct Speed {
        int numerator;
        int denominator;
        const char* bytes;
    };
    const Speed speeds[] = {
        {2, 1, "02 00 01 00"},
        {10, 1, "0a 00 01 00"},
        {30, 1, "1e 00 01 00"},
        {120, 1, "78 00 01 00"},
        {20, 10, "14 00 0a 00"},
        {60, 2, "3c 00 02 00"},
        {240, 2, "f0 00 02 00"},
        {1200, 10, "b0 04 0a 00"},
        {65534, 32767, "fe ff ff 7f"},
        {131072, 65536, "00 00 00 00"}, // only the low 16 bits of either are sent
        {2147483640, 17895697, "f8 ff 11 11"},
    };
    for (const Speed& one : speeds) {
        SCOPED_TRACE(one.numerator);
        EXPECT_EQ(run("ChangePlaySpeed", {3, speed(forward, one.numerator, one.denominator)}),
                  "OK");
        EXPECT_EQ(sent(), std::string("10000031: 03 00 00 00 ") + one.bytes);
    }
}

TEST_F(Play, SpeedLinesShowTheRecord) {
    EnumValue direction(directionClass, "BACKWARD", -1);
    EXPECT_EQ(run("ChangePlaySpeed", {-1, speed(backward, 131074, 65537)}), "OK");
    EXPECT_EQ(sent(), "10000031: ff ff ff 00 02 00 01 00");
    EXPECT_LINES("dtvSvLibChangePlaySpeed", R"(
        START |hdl = -1
        DEBUG |SEND, dtvsv_handle = 65535
        DEBUG |SEND, SPECIAL_PLAY : direction = 255, numerator = 2, denominator = 1
        RESULT 0
        END |ret = 0)");
}

TEST_F(Play, SpeedsThatAreRefused) {
    struct Speed {
        int numerator;
        int denominator;
        const char* message;
    };
    const Speed speeds[] = {
        {1, 2, "PlaySpeed Err, ans = 0, numerator = 1, denominator = 2"},
        {3, 1, "PlaySpeed Err, ans = 3, numerator = 3, denominator = 1"},
        {1, 1, "PlaySpeed Err, ans = 1, numerator = 1, denominator = 1"},
        {9, 1, "PlaySpeed Err, ans = 9, numerator = 9, denominator = 1"},
        {11, 1, "PlaySpeed Err, ans = 11, numerator = 11, denominator = 1"},
        {29, 1, "PlaySpeed Err, ans = 29, numerator = 29, denominator = 1"},
        {31, 1, "PlaySpeed Err, ans = 31, numerator = 31, denominator = 1"},
        {119, 1, "PlaySpeed Err, ans = 119, numerator = 119, denominator = 1"},
        {121, 1, "PlaySpeed Err, ans = 121, numerator = 121, denominator = 1"},
        {60, 1, "PlaySpeed Err, ans = 60, numerator = 60, denominator = 1"},
        {0, 1, "PlaySpeed Err, ans = 0, numerator = 0, denominator = 1"},
        {5, 2, "PlaySpeed Err, ans = 0, numerator = 5, denominator = 2"},
        {21, 10, "PlaySpeed Err, ans = 0, numerator = 21, denominator = 10"},
        {0, 0, "PlaySpeed Err, ans = 0, numerator = 0, denominator = 0"},
        {2, 0, "PlaySpeed Err, ans = 0, numerator = 2, denominator = 0"},
        {2147483647, 1, "PlaySpeed Err, ans = 2147483647, numerator = 2147483647, denominator = 1"},
        {-2, -1, "numerator or denominator is Negative, numerator = -2, denominator = -1"},
        {-2, 1, "numerator or denominator is Negative, numerator = -2, denominator = 1"},
        {2, -1, "numerator or denominator is Negative, numerator = 2, denominator = -1"},
        {-1, 0, "numerator or denominator is Negative, numerator = -1, denominator = 0"},
        {-2147483647 - 1, -1,
         "numerator or denominator is Negative, numerator = -2147483648, denominator = -1"},
    };
    for (const Speed& one : speeds) {
        SCOPED_TRACE(one.message);
        expectRefused("ChangePlaySpeed", speed(forward, one.numerator, one.denominator),
                      std::string("RESULT 5\nDEBUG |") + one.message);
    }
}

TEST_F(Play, SpeedRefusals) {
    expectRefused("ChangePlaySpeed", nullptr, "RESULT 5\nDEBUG |special_play_obj is NULL, ret = 5");
    expectRefused("ChangePlaySpeed", speed(nullptr, -1, 0),
                  noEnum + "direction getEnumValue Error, ret = 1");
    jobject object = speed(forward, 2, 1);
    {
        FailJni missing("GetObjectClass", 0, FailJni::Leaves::nothing);
        expectRefused("ChangePlaySpeed", object,
                      "RESULT 5\nDEBUG |special_play class is NULL, ret = 5");
    }
    const std::string fields[] = {
        noEnumField + "direction getEnumValue Error, ret = 1",
        "RESULT 5\nDEBUG |numerator fieldID is NULL, ret = 5",
        "RESULT 5\nDEBUG |denominator fieldID is NULL, ret = 5",
    };
    for (int field = 0; field < 3; ++field) {
        SCOPED_TRACE(field);
        FailJni missing("GetFieldID", field);
        expectRefused("ChangePlaySpeed", object, fields[field]);
    }
}

// SkipPlay.

TEST_F(Play, SkipIsTwelveBytes) {
    EXPECT_EQ(run("SkipPlay", {3, skip(backward, 0x01020304)}), "OK");
    EXPECT_EQ(sent(), "10000034: 03 00 00 00 01 00 00 00 04 03 02 01");
    EXPECT_LINES("dtvSvLibSkipPlay", R"(
        START |hdl = 3
        DEBUG |SEND, dtvsv_handle = 3
        DEBUG |SEND, SKIP_PLAY : direction = 1, skipsec = 16909060
        RESULT 0
        END |ret = 0)");
    service->setResult(-5);
    EnumValue direction(directionClass, "FORWARD", 1000);
    EXPECT_EQ(run("SkipPlay", {0x10004, skip(forward, -2)}), "NG");
    EXPECT_EQ(sent(), "10000034: 04 00 00 00 e8 00 00 00 fe ff ff ff");
    EXPECT_LINES("dtvSvLibSkipPlay", R"(
        START |hdl = 65540
        DEBUG |SEND, dtvsv_handle = 4
        DEBUG |SEND, SKIP_PLAY : direction = 232, skipsec = -2
        RESULT 1
        END |ret = -5)");
}

TEST_F(Play, SkipRefusals) {
    expectRefused("SkipPlay", nullptr, "RESULT 5\nDEBUG |skip_play_obj is NULL, ret = 5");
    expectRefused("SkipPlay", skip(nullptr, 1), noEnum + "direction getEnumValue Error, ret = 1");
    jobject object = skip(forward, 1);
    {
        FailJni missing("GetObjectClass", 0, FailJni::Leaves::nothing);
        expectRefused("SkipPlay", object, "RESULT 5\nDEBUG |skip_play class is NULL, ret = 5");
    }
    {
        FailJni missing("GetFieldID", 0);
        expectRefused("SkipPlay", object, noEnumField + "direction getEnumValue Error, ret = 1");
    }
    FailJni missing("GetFieldID", 1);
    expectRefused("SkipPlay", object, "RESULT 5\nDEBUG |skipsec fieldID is NULL, ret = 5");
}

} // namespace
