#include "arguments/model.h"

#include "arguments/reading.h"

#include <cstdio>
#include <cstdlib>

namespace hostile {
namespace {

constexpr int kFirstSynchronous = 0x10000038;
constexpr int kDecodeScreen = 0x1000003b;
constexpr int kDecodeAudio = 0x1000003c;
constexpr int kTerminateRec = 0x10000040;

/// The object that a synchronous native answers.
std::string info(const Round& round, int message, int code, int handle, int program = 0,
                 int object = 0) {
    std::string text =
        round.native->answer + "(" + std::to_string(code) + ", " + std::to_string(handle);
    if (message == kTerminateRec) {
        text += ", BG_TS_DTVSVLIB_TERMINATE_REC_REPLY(" + std::to_string(program) + ", " +
                std::to_string(object) + ")";
    }
    return text + ")";
}

std::string answerOfReply(const Round& round, int message) {
    const size_t capacity = message == kTerminateRec ? 12 : 8;
    std::vector<uint8_t> reply = round.reply;
    reply.resize(capacity);
    const auto u16 = [&reply](size_t at) {
        return at + 1 < reply.size() ? reply[at] | reply[at + 1] << 8 : 0;
    };
    const int session = round.arguments[0].number & 0xffff;
    const size_t tested = message == kTerminateRec ? 0 : 4;
    if (round.reply_size.value_or(0) == 0 && u16(tested) == 0) {
        return info(round, message, 16, session);
    }
    const auto result =
        static_cast<int>(static_cast<uint32_t>(u16(4)) | static_cast<uint32_t>(u16(6)) << 16);
    return info(round, message, result, u16(0), u16(8), u16(10));
}

} // namespace

Expected expected(const Round& round, int delay_bound) {
    Reading call(round, delay_bound);
    if (!readCommand(round.native->name, call)) {
        std::fprintf(stderr, "nothing is known of %s\n", round.native->name);
        std::abort();
    }
    Expected expected = call.expected();
    expected.synchronous = expected.message >= kFirstSynchronous;
    if (call.thrown()) {
        expected.answer = "throws java.lang.NullPointerException";
    } else if (call.refused()) {
        const bool is_info = expected.synchronous && expected.message != kDecodeScreen &&
                             expected.message != kDecodeAudio;
        expected.answer = is_info
                              ? info(round, expected.message, 5, round.arguments[0].number & 0xffff)
                              : "PARAM_NG";
    } else {
        expected.sent = true;
        if (!expected.synchronous) {
            expected.answer = round.send_result == 0 ? "OK" : "NG";
        } else if (round.send_result != 0) {
            expected.answer = info(round, expected.message, 1, round.arguments[0].number & 0xffff);
        } else {
            expected.answer = answerOfReply(round, expected.message);
        }
    }
    return expected;
}

} // namespace hostile
