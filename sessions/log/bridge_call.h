// A call of the bridge, as far as lines of its trace show it.
#pragma once

#include "sessions/log/faults.h"
#include "sessions/log/line_header.h"
#include "sessions/log/log_reader.h"
#include "sessions/log/record_fields.h"

#include "records/catalogue.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sessions {

/// Where a line was written, and what it said.
struct LoggedLine {
    uint64_t line = 0; ///< number in the log
    std::string function;
    int source_line = 0;
    std::string text;
};

/// A line that says that something went wrong.
struct FaultLine {
    Fault fault = Fault::kNone;
    LoggedLine where;
    /// Of a class, a method or an object: their numbers in the bridge's tables, or -1; and the name
    /// of a class.
    int class_id = -1;
    int method_id = -1;
    std::string name;
};

/// One call of a native method, one event that was delivered, or the load of the library.
struct BridgeCall {
    enum class Kind : uint8_t {
        kNative,
        kEvent,
        kLoad,
    };

    Kind kind = Kind::kNative;
    uint64_t number = 0;                         ///< of the call in the log, from 1
    const catalogue::Message* message = nullptr; ///< null: not known, or none
    int id = 0;                                  ///< of the message; 0: not known
    std::string function;                        ///< the first one that is known of it
    std::string thread;
    uint32_t thread_id = 0; ///< from the log, or a number that the log's reader gave
    uint64_t first = 0;     ///< line
    uint64_t last = 0;
    int source_line = 0; ///< of the first line
    std::optional<LogTime> begun;
    std::optional<LogTime> ended_at;
    bool has_begin = false; ///< its FUNCSTART line is in the log
    bool has_end = false;   ///< its FUNCEND line is in the log

    std::optional<int> handle;
    std::optional<int> size; ///< of the record, as the event says it
    std::optional<int> ret;  ///< what the send returned
    std::optional<int> code; ///< of the result that Java got: 5 is PARAM_NG
    bool sent = false;       ///< lines say that it was sent
    uint64_t sent_line = 0;  ///< the last one before it was sent; 0: none
    std::optional<LogTime> sent_at;
    bool refused = false;          ///< the native refused an argument
    bool aborted = false;          ///< a synchronous command had an empty answer
    bool called_back = false;      ///< the callback of an event was called
    bool handled = false;          ///< an event reached its handler
    bool done = false;             ///< the event's handler ended as it does when all went well
    std::optional<int> reply_size; ///< of the answer
    std::optional<int> result; ///< in the reply of an event, also of one whose number is not known
    RecordInLines record;
    RecordInLines answer;
    std::vector<FaultLine> faults; ///< in the order of their lines

    bool given = false; ///< its first step has been given
};

/// The functions of the bridge whose lines say more than their values.
namespace trace_function {
constexpr std::string_view kReception = "recvEventFromServer";
constexpr std::string_view kDispatch = "DoListenerEvent";
constexpr std::string_view kLoad = "JNI_OnLoad";
constexpr std::string_view kEnvironment = "getJNIEnv";
constexpr std::string_view kResultCode = "getRetCode";
constexpr std::string_view kAnswerObject = "makeComReplyObjSync";
constexpr std::string_view kAnswerValues = "makeComSubReplyObjSync";
} // namespace trace_function

/// No record is longer; a longer size in a log is damage.
constexpr int kLongestRecord = 65536; ///< bytes

/// Whether it handles an event.
bool isHandler(std::string_view function);

LoggedLine whereOf(const LogLine& line);

/// What a call's own FUNCSTART and FUNCEND lines name.
std::string_view ownFunction(const BridgeCall& call);

/// Whether a line is written while the library is loaded, and at no other time.
bool isOfLoad(const TraceLine& line);

std::optional<int> intOf(std::optional<int64_t> number);

/// The session handle that a line shows, as it travels.
std::optional<int> handleIn(const TraceLine& line);

bool isSynchronous(const BridgeCall& call);

/// Sets what is known of a call with its message: the number, and the record, of which nothing is
/// known yet.
void setMessage(BridgeCall& call, const catalogue::Message* message);

} // namespace sessions
