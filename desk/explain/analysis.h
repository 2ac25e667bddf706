// Finds what went wrong in the messages of a capture, or in the calls and messages of a log.
//
//     messages, calls, stack traces -> findings by rule and subject -> first causes
#pragma once

#include "desk/explain/coverage.h"
#include "desk/explain/finding.h"
#include "desk/explain/folding.h"
#include "desk/explain/latency.h"
#include "desk/explain/order.h"
#include "desk/explain/recent_lines.h"
#include "desk/explain/story.h"

#include "sessions/log/activity.h"
#include "sessions/message.h"
#include "sessions/pairing.h"

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace explain {

class Analysis {
public:
    /// An answer that takes longer is slow, in nanoseconds.
    explicit Analysis(int64_t slow) : slow_(slow) {}

    /// Of a log.
    void step(const sessions::Step& step);
    void unmatched(const sessions::UnmatchedLine& unmatched) { coverage_.unmatched(unmatched); }
    void line(const sessions::LogLine& line);

    /// Of a capture: the message with that number in the file.
    void message(const sessions::Message& message, uint64_t number);
    void beginSection();

    /// Once all has been read: what is still open is counted, and the first causes are found.
    void end();

    /// First causes before what follows from them, the worst first, then by line.
    const std::vector<Finding>& findings() const { return findings_; }
    const Latencies& latencies() const { return latencies_; }
    const Story& story() const { return story_; }
    Coverage& coverage() { return coverage_; }
    const Coverage& coverage() const { return coverage_; }

private:
    struct Entry {
        Finding finding;
        Relations relations;
    };
    /// A command without an answer.
    struct Sent {
        std::string name;
        Place place;
        std::string thread;
        std::optional<int> handle;
        sessions::Moment time;
        bool out_of_place = false; ///< it needs what has not happened in its session
    };

    std::string nameOfLine(uint64_t line) const {
        return (is_capture_ ? "message " : "line ") + std::to_string(line);
    }
    Place lineOf(const sessions::BridgeCall& call, uint64_t line) const;
    Entry& add(Rule rule, const std::string& subject, const std::string& detail, const Place& place,
               const Relations& relations, const std::string& thread);
    void pass(const sessions::Message& message, const Place& place);
    void passCommand(const sessions::Message& message, const sessions::Link& link,
                     const Place& place);
    void passAnswer(const sessions::Message& message, const sessions::Link& link,
                    const Place& place);
    void passEvent(const sessions::Message& message, const sessions::Link& link,
                   const Place& place);
    void passReply(const sessions::Message& message, const sessions::Link& link,
                   const Place& place);
    void keep(uint64_t number, const Sent& sent);
    void giveUp(std::map<uint64_t, Sent>::iterator found, bool never = true);
    bool isOpen(int handle) const;
    bool isReleased(int handle) const;
    std::map<uint64_t, Sent>::iterator waitingCreate();
    void checkOrder(const Sent& command);
    bool hadTime(const sessions::OpenCommand& command) const;
    void checkSession(const sessions::Message& message, int handle, const Place& place);
    void checkResult(const sessions::Message& message, const sessions::Link& link,
                     std::string_view field, const Place& place);
    int64_t shortestWait(const sessions::Message& message, const sessions::Link& link,
                         const Sent& command) const;
    void answered(const sessions::Message& message, const sessions::Link& link, uint64_t line);
    void refusedInCapture(const sessions::Message& message, const Place& place);
    void callEnded(const sessions::BridgeCall& call);
    void nativeEnded(const sessions::BridgeCall& call);
    void eventEnded(const sessions::BridgeCall& call);
    void loadEnded(const sessions::BridgeCall& call);
    void takeLooseAttach(bool ends_process);
    void readStackTrace(const sessions::LogLine& line);
    void findStop(const std::vector<sessions::OpenCommand>& open);
    void unanswered(const std::vector<sessions::OpenCommand>& commands, bool may_come);
    void endProcess(bool log_ends);

    const int64_t slow_;
    sessions::Pairing pairing_;
    bool is_capture_ = false;
    Coverage coverage_;
    RecentLines recent_;
    Latencies latencies_;
    Story story_;
    std::map<FindingKey, Entry> entries_;
    std::vector<Finding> findings_;

    std::map<uint64_t, Sent> sent_;     ///< by number of the message: those without an answer
    std::map<int, bool> sessions_;      ///< by handle: whether it has been released
    std::map<int, SessionOrder> order_; ///< by handle
    /// By handle: the commands that failed when they were sent last.
    std::map<int, std::set<std::string>> failed_;
    bool covers_sessions_ = false;       ///< every open session was opened in the log
    bool process_ended_ = false;         ///< the library's end is in the log
    bool knows_replies_ = true;          ///< the log names each reply that arrived
    int64_t longest_latency_ = 0;        ///< nanoseconds
    std::map<uint32_t, Sent> last_sent_; ///< by number of the thread
    std::optional<std::pair<Place, std::string>> loose_attach_; ///< that may be no event's
    uint64_t last_reply_ = 0;                                   ///< line
    uint64_t last_event_ = 0;                                   ///< line
    uint64_t last_message_ = 0;                                 ///< line
    std::vector<Sent> not_taken_; ///< the commands since the last event that were not taken

    std::string exception_; ///< of the stack trace that is read; empty: it has been told
    std::optional<sessions::Message> event_of_capture_;
};

} // namespace explain
