// The DTV service that is a capture: it takes the commands of the Java side in the place of those
// that were recorded, and answers and sends events as it was recorded.
//
//     Java side -> command -> held against the recorded ones of its thread -> recorded answer
//     recorded event, when all before it has passed -> delivered -> Java side
//
// The order is that of Sequence. A capture of the replay has the messages in the recording's order,
// when each thread sends its commands in their turn, as the player does.
#pragma once

#include "replay/divergence.h"
#include "replay/recording.h"
#include "replay/sequence.h"

#include "dtv/exchange.h"

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace replay {

struct Settings {
    Pace pace;
    /// Delivers an event of which not all bytes are known with zeros in their place. Otherwise it
    /// is not delivered, and what was recorded on its thread up to the next event is not waited
    /// for.
    bool fill = false;
    /// Takes the commands that the recording does not have; null: they are not taken.
    std::shared_ptr<dtv::ServiceEndpoint> unknown;
};

/// Made by std::make_shared. One at a time in a process, one after the other.
class Service : public dtv::ServiceEndpoint, public std::enable_shared_from_this<Service> {
public:
    Service(Recording recording, Settings settings);

    int onCommand(const dtv::Command& command) override;
    int onSynchronousCommand(const dtv::Command& command, const dtv::Reply& reply) override;
    void onReturned(int message_id) override;

    const Recording& recording() const { return recording_; }

    /// Waits until all has passed and the callbacks have returned, or nothing comes any more, and
    /// ends the replay.
    Outcome finish();
    /// Ends the replay as it is. Does not wait for callbacks.
    void end();

    // For the player, which sends the recorded commands.

    /// The threads whose commands are not those of callbacks.
    std::vector<size_t> senders() const;
    /// The calling thread sends the commands of a recorded one from now on.
    void enter(size_t thread);
    /// Waits for the turn of the next command of the calling thread. kNone when another message
    /// comes first there, when there is no further one, or when the replay has ended.
    size_t nextCommand();
    bool hasCome(size_t entry);
    /// A command cannot be sent.
    void giveUp(size_t entry, const std::string& reason);

private:
    class Steps;

    /// How far a recorded thread is.
    struct Track {
        size_t place = 0;     ///< of its next entry
        bool taken = false;   ///< a thread of this run has taken its part
        bool started = false; ///< its events are being delivered
    };

    int take(const dtv::Command& command, const dtv::Reply* reply);
    int answer(std::unique_lock<std::mutex>& lock, size_t command, const dtv::Reply* reply);
    size_t match(const dtv::Command& command);
    size_t findAhead(size_t thread, const dtv::Command& command) const;
    size_t threadHere();
    size_t threadNamed(const std::string& name) const;
    size_t nextEntry(size_t thread) const;
    bool isCommand(size_t entry) const;
    void pass(size_t entry, bool came = true);
    void skipCommand(size_t entry, const std::string& reason);
    void begin();
    void startDelivery();

    void deliverEvents(size_t thread);
    void deliver(std::unique_lock<std::mutex>& lock, size_t event);
    void leaveOut(size_t event);
    void endEvent(size_t event, int result);

    const Recording recording_;
    const Settings settings_;
    const uint64_t run_; ///< the number of this replay in the process

    std::mutex mutex_; ///< guards all below; not held while Java code runs
    std::condition_variable delivered_;
    Sequence sequence_;
    std::vector<Track> tracks_; ///< as the recording's threads
    Outcome outcome_;
    size_t deliverers_ = 0; ///< threads that deliver events
};

} // namespace replay
