// What the bridge did, as the lines of its trace show it: the calls of native methods and the
// events that were delivered, one thread at a time.
#pragma once

#include "sessions/log/bridge_call.h"
#include "sessions/log/log_reader.h"

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace sessions {

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
    // What is kept at most, whatever a log lacks. The bridge itself has no more than 20 threads of
    // events, and no call needs more than a few of the others.
    static constexpr size_t kMostThreads = 1024;
    static constexpr size_t kMostCalls = 16; ///< of a thread
    static constexpr size_t kMostFrames = 64;
    static constexpr size_t kMostFaults = 1024;

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
