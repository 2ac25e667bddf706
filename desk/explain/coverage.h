// What a log covers, and what it cannot tell.
#pragma once

#include "sessions/log/activity.h"
#include "sessions/log/log_reader.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace explain {

/// What says that lines are missing.
enum class LossKind : uint8_t {
    kLevelsMissing,
    kChatty, ///< logd threw lines away, or put equal ones together
    kCutLine,
    kGap, ///< a long time without a line
    kTimeJump,
    kEndWithoutBegin,
    kBeginWithoutEnd,
    kCommandWithoutReply,
    kReplyWithoutCommand,
    kNotKnown, ///< lines that this bridge does not write
    kDamaged,  ///< the file itself
};
const char* nameOf(LossKind kind);

struct Loss {
    LossKind kind = LossKind::kLevelsMissing;
    uint64_t count = 0; ///< how many such marks
    uint64_t line = 0;  ///< of the first; 0: none
    std::string text;   ///< in a sentence
};

/// Takes the marks of loss one by one.
class Coverage {
public:
    /// A line of the log, of any kind.
    void line(const sessions::LogLine& line);
    void unmatched(const sessions::UnmatchedLine& unmatched);
    void mark(LossKind kind, uint64_t line, const std::string& text);

    /// All of them, once the log has been read.
    std::vector<Loss> losses(const sessions::LogCounts& counts) const;

    /// The time of the first and the last line of the bridge.
    const std::optional<sessions::LogTime>& begin() const { return begin_; }
    const std::optional<sessions::LogTime>& end() const { return end_; }
    /// The last line that came after a gap or a jump in time; 0: there was none.
    uint64_t lastJump() const { return last_jump_; }

private:
    void time(const sessions::LogLine& line);

    std::map<LossKind, Loss> losses_;
    uint64_t dropped_ = 0;
    uint64_t last_jump_ = 0;
    bool expects_info_ = false; ///< there are lines that one of INFO follows
    std::optional<sessions::LogTime> begin_;
    std::optional<sessions::LogTime> end_;
    std::optional<sessions::LogTime> last_; ///< of any line
    bool begins_another_ = false;           ///< the next line begins another part of the log
};

} // namespace explain
