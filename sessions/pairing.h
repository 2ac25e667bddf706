// Which messages of a session belong together: a command and its answer, a command and the event
// that reports its outcome, an event and its refusal.
#pragma once

#include "sessions/message.h"
#include "sessions/moment.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace sessions {

/// What is known of a message when it passes. The partner is a message before it.
struct Link {
    uint64_t number = 0; ///< of the message, from 1
    /// The handle of its session: its own, or its partner's when it has none. Nothing for a message
    /// that names no session, and where the record ends before the handle does.
    std::optional<uint16_t> session;
    uint64_t partner = 0; ///< number of the message that it belongs to; 0: none
    /// Nanoseconds since the partner. Negative when the clock was set back between the two. Nothing
    /// without a partner, and when 64 bits do not hold it.
    std::optional<int64_t> latency;
    bool ambiguous = false; ///< the partner may be another command of the same kind and session
};

/// A command that waits for its answer, or for the event that reports its outcome.
struct OpenCommand {
    uint64_t number = 0;
    int id = 0;
    std::optional<uint16_t> session;
    uint32_t thread_id = 0;
    Moment time;
    bool ambiguous = false;
};

/// Takes the messages of a session one by one, in their order.
///
/// An answer belongs to the last command of its thread, when that has the same id and no answer
/// yet. A refusal belongs to the last event of its thread, when that has the same id and was not
/// refused yet. A reply event belongs to the oldest command that waits for an event of its id with
/// its handle; Create has no handle and waits for any CreateReply. An event whose handle is not in
/// the log that it was made of belongs to the oldest command of any session. A command that was not
/// taken waits for no event. When two commands of one id and handle wait at the same time, what is
/// said of both is marked as ambiguous: the events do not say which of them they answer.
///
/// What begins with a section, and what ends with a session, belongs to nothing before it:
/// commands that wait for an event then are never answered. A session ends with a ReleaseReply or
/// an answer to Release_Sync whose result is 0, for the commands that were sent before the release:
/// the service answers later ones with an error. A CreateReply with the result 0 gives its handle
/// to a new session, which ends what an earlier one left.
///
/// Kept are the commands without an answer, and the last command and event of each thread.
class Pairing {
public:
    Link add(const Message& message);

    /// The messages that follow are of another run: its threads and handles are others.
    void beginSection();

    enum class GiveUp {
        kOldest,
        kNewest
    };
    /// Gives up commands while more than `most` wait for an event, so that what is kept does not
    /// grow with their number. They are counted among those whose session has ended.
    void keepWaiting(size_t most, GiveUp which);

    /// Counts something in place of a message, so that the numbers of the messages after it are
    /// their places in the file.
    void pass() { ++count_; }

    /// The commands without an answer, in the order of their numbers: those that wait now, and
    /// those whose session or section has ended.
    std::vector<OpenCommand> open() const;

    /// Those whose session or section has ended since the last call. They are forgotten, so that
    /// what is kept does not grow with the number of commands.
    std::vector<OpenCommand> takeGivenUp();

private:
    struct Waiting {
        OpenCommand command;
        /// Whether the command before it in the queue was ambiguous without this one.
        bool before_was_ambiguous;
    };
    /// The id of an event and the handle in it.
    using Awaited = std::pair<int, std::optional<uint16_t>>;

    struct Sent {
        OpenCommand command;
        std::optional<Awaited> awaited;
    };
    struct Delivered {
        uint64_t number;
        int id;
        std::optional<uint16_t> session;
        Moment time;
    };
    struct Thread {
        std::optional<Sent> command;
        std::optional<Delivered> event;
    };

    using Queues = std::map<Awaited, std::deque<Waiting>>;

    void addCommand(const Message& message, const catalogue::Message* known, Link& link);
    void addAnswer(const Message& message, Link& link);
    void addEvent(const Message& message, Link& link);
    void addRefusal(const Message& message, Link& link);
    void forget(const Sent& sent);
    Queues::iterator oldestWaiting(int event, bool& guessed);
    void endSession(const Message& message, const Link& link);
    void giveUp(uint16_t handle, uint64_t before);

    uint64_t count_ = 0;
    std::unordered_map<uint32_t, Thread> threads_;
    size_t waiting_count_ = 0;                    ///< in all queues
    Queues waiting_;                              ///< for an event; no queue is empty
    std::map<uint64_t, OpenCommand> synchronous_; ///< that wait for an answer, by number
    std::map<uint64_t, OpenCommand> given_up_;    ///< that are never answered, by number
};

/// Nanoseconds from one moment to another, or nothing when 64 bits do not hold them.
std::optional<int64_t> nanosecondsBetween(const Moment& from, const Moment& to);

} // namespace sessions
