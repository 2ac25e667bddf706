// What the bridge did, as the lines of its trace show it: the calls of native methods and the
// events that were delivered, one thread at a time.
#pragma once

#include "sessions/log/faults.h"
#include "sessions/log/log_reader.h"
#include "sessions/log/record_fields.h"

#include "records/catalogue.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
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

/// What happened, in an order in which no reply comes before its command.
struct Step {
    enum class Kind : uint8_t {
        kCommand,      ///< a command is sent
        kAnswer,       ///< a synchronous command has returned, or another that was not taken
        kEvent,        ///< an event arrives
        kRefusedEvent, ///< the bridge did not take it
        kCallEnd,      ///< all that the log says of a call is known
        kLoad,         ///< the library is loaded: a process begins
    };
    Kind kind;
    const BridgeCall& call;
};

/// A begin or an end of a call that is not in the log.
struct UnmatchedLine {
    bool has_begin = false; ///< the end is missing; otherwise the begin
    LoggedLine where;
};

/// Takes the lines of a log one by one. Kept is what has begun and not ended, for each thread.
class Activity {
public:
    using TakeStep = std::function<void(const Step&)>;
    using TakeUnmatched = std::function<void(const UnmatchedLine&)>;

    Activity(TakeStep take_step, TakeUnmatched take_unmatched)
        : take_step_(std::move(take_step)), take_unmatched_(std::move(take_unmatched)) {}

    /// Takes a line of the trace; others are passed over.
    void add(const LogLine& line);

    /// The log has ended: gives what is still open.
    void end();

    /// Forgets the calls that are open, because the log goes on elsewhere.
    void interrupt();

private:
    /// A function within a call that has begun and not ended.
    struct Frame {
        LoggedLine where;
        bool may_not_end = false; ///< it ends without a line
    };
    struct OpenCall {
        BridgeCall call;
        std::vector<Frame> frames;
        bool answering = false; ///< its end has been seen, and its Java object is made
        /// What the last line of CallMethod named.
        int class_id = -1;
        int method_id = -1;
        /// The lines of a call that has no begin: one that comes again belongs to the next call.
        std::vector<const KnownLine*> seen;
    };
    struct Thread {
        std::string name;
        uint32_t id = 0;
        std::vector<std::unique_ptr<OpenCall>> calls; ///< the innermost last
    };
    using ThreadKey = std::pair<int64_t, std::string>;

    Thread& threadOf(const LogLine& line);
    void forgetThreads();
    OpenCall& open(Thread& thread, const LogLine& line, BridgeCall::Kind kind);
    OpenCall& openWithoutBegin(Thread& thread, const LogLine& line, BridgeCall::Kind kind);
    OpenCall* callOf(Thread& thread, const LogLine& line);
    void begin(Thread& thread, const LogLine& line);
    void beginEvent(Thread& thread, const LogLine& line);
    void beginNative(Thread& thread, const LogLine& line);
    void finish(Thread& thread, const LogLine& line);
    bool finishCall(Thread& thread, const LogLine& line);
    bool finishFrame(Thread& thread, const LogLine& line);
    void closeAnswered(Thread& thread, std::string_view function);
    void read(OpenCall& open, const LogLine& line);
    void readNative(OpenCall& open, const LogLine& line);
    void readAnswer(OpenCall& open, const LogLine& line);
    void readHandler(OpenCall& open, const LogLine& line);
    void readFault(OpenCall& open, const LogLine& line, Fault fault);
    void closeFrames(OpenCall& open, size_t from);
    static bool lacksEnd(const OpenCall& open);
    void closeInnermost(Thread& thread);
    void closeAll(Thread& thread);
    void giveFirst(OpenCall& open);
    void giveCommandsSentBefore(uint64_t line);
    void step(Step::Kind kind, const BridgeCall& call) { take_step_({kind, call}); }

    TakeStep take_step_;
    TakeUnmatched take_unmatched_;
    std::map<ThreadKey, Thread> threads_;
    uint64_t calls_ = 0;
    uint32_t next_thread_ = 1;
    bool begins_are_logged_ = false;
    bool ends_are_logged_ = false;
};

} // namespace sessions
