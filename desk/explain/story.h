// The sessions of a log as a short story.
#pragma once

#include "sessions/message.h"
#include "sessions/pairing.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace explain {

/// A session of the Java side with the service, from CreateReply to ReleaseReply.
struct SessionStory {
    int handle = 0;
    uint64_t opened = 0; ///< line of its CreateReply; 0: it was open before
    uint64_t closed = 0; ///< line of its end; 0: the log does not show one
    uint64_t first = 0;  ///< line of the first message of it
    uint64_t last = 0;
    uint64_t commands = 0;
    uint64_t events = 0;
    std::vector<std::string> selected; ///< the channels, the first ones
    uint64_t selections = 0;
    uint64_t recordings = 0;
    uint64_t playbacks = 0;
};

/// Collects the sessions, the first of them each by itself.
class Story {
public:
    static constexpr size_t kMostSessions = 32;
    static constexpr size_t kMostChannels = 5;

    void load(uint64_t line) { loads_.push_back(line); }
    void message(const sessions::Message& message, const sessions::Link& link, uint64_t line);
    void opened(int handle, uint64_t line);
    void closed(int handle, uint64_t line);
    /// The handles that follow are those of another process.
    void beginProcess() { current_.clear(); }

    const std::vector<SessionStory>& sessions() const { return sessions_; }
    /// How many there were beyond those.
    uint64_t more() const { return more_; }
    /// Lines at which the library was loaded.
    const std::vector<uint64_t>& loads() const { return loads_; }

private:
    SessionStory* find(int handle, uint64_t line);

    std::vector<SessionStory> sessions_;
    std::map<int, size_t> current_; ///< handle: index, or kMostSessions for one that is not kept
    std::vector<uint64_t> loads_;
    uint64_t more_ = 0;
};

} // namespace explain
