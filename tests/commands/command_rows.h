// Commands as rows of tables: a call, its own lines and the record, inserted into the lines that
// every command writes.
#pragma once

#include "commands/command_test.h"

#include <string>
#include <vector>

namespace commands {

/// The edges of a Java int.
constexpr int lowest = -2147483647 - 1;
constexpr int highest = 2147483647;

const std::string ok = "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_OK";
const std::string ng = "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_NG";
const std::string param_ng = "BG_TE_DTVSVLIB_RESULT.DTVSVLIB_RESULT_PARAM_NG";

using Texts = std::vector<std::string>;

/// A command that was sent: `start` and `sends` are its own lines' messages, `sent` is what the
/// send returned and `code` what getRetCode derived from it.
inline std::string sentTrace(const std::string& function, const std::string& start,
                             const Texts& sends, const std::string& code, const std::string& sent) {
    std::string lines = "START |" + start + "\n";
    for (const std::string& send : sends) {
        lines += "DEBUG |" + send + "\n";
    }
    return harness::nativeTrace(function, lines + "RESULT " + code + "\nEND |ret = " + sent);
}

/// A command that refused an argument.
inline std::string refusedTrace(const std::string& function, const std::string& start,
                                const std::string& refusal) {
    return harness::nativeTrace(function,
                                "START |" + start + "\nRESULT 5\nDEBUG |" + refusal + "\n");
}

inline std::vector<harness::Value> values(const std::vector<int>& numbers) {
    return {numbers.begin(), numbers.end()};
}

/// A call that is sent.
struct Sent {
    Sent(const char* native, std::vector<int> arguments, const char* function, const char* start,
         Texts sends, const char* wire)
        : native(native), arguments(std::move(arguments)), function(function), start(start),
          sends(std::move(sends)), wire(wire) {}

    const char* native;         ///< its Java name
    std::vector<int> arguments; ///< as Java gives them
    const char* function;       ///< its name in the trace
    const char* start;          ///< the message of its FUNCSTART line
    Texts sends;                ///< the messages of its SEND lines
    const char* wire;           ///< message id and record
};

/// A call that is refused.
struct Refused {
    Refused(const char* native, std::vector<int> arguments, const char* function, const char* start,
            const char* refusal)
        : native(native), arguments(std::move(arguments)), function(function), start(start),
          refusal(refusal) {}

    const char* native;
    std::vector<int> arguments;
    const char* function;
    const char* start;
    const char* refusal; ///< the message of the line that gives the reason
};

class Commands : public CommandTest {
protected:
    void expectSent(const Sent& row) {
        EXPECT_EQ(harness::call(row.native, values(row.arguments)), ok);
        EXPECT_EQ(service->takeTexts(), Texts{row.wire});
        EXPECT_TRACE(log->take(), sentTrace(row.function, row.start, row.sends, "0", "0"));
    }

    /// The same call when the service does not take it.
    void expectNotDelivered(const Sent& row) {
        service->setResult(-1);
        EXPECT_EQ(harness::call(row.native, values(row.arguments)), ng);
        EXPECT_EQ(service->takeTexts(), Texts{row.wire});
        EXPECT_TRACE(log->take(), sentTrace(row.function, row.start, row.sends, "1", "-1"));
    }

    void expectRefused(const Refused& row) {
        EXPECT_EQ(harness::call(row.native, values(row.arguments)), param_ng);
        EXPECT_EQ(service->takeTexts(), Texts{});
        EXPECT_TRACE(log->take(), refusedTrace(row.function, row.start, row.refusal));
    }
};

class SentCommands : public Commands, public testing::WithParamInterface<Sent> {};
class RefusedCommands : public Commands, public testing::WithParamInterface<Refused> {};

/// "ControlLNA_2": the command and the row's place in its table.
template <typename Row>
std::string rowName(const testing::TestParamInfo<Row>& row) {
    return std::string(row.param.native).substr(9) + "_" + std::to_string(row.index);
}

inline void PrintTo(const Sent& row, std::ostream* to) {
    *to << row.wire;
}
inline void PrintTo(const Refused& row, std::ostream* to) {
    *to << row.refusal;
}

} // namespace commands
