#include "desk/explain/coverage.h"

#include "desk/explain/text.h"

#include <algorithm>

namespace explain {
namespace {

using sessions::LogCounts;
using sessions::LogLine;
using sessions::LogLineKind;
using sessions::TraceLevel;

/// Threads write side by side: a line may be this much older than the one before it.
constexpr int64_t kMostBack = kSecond;
/// A receiver with an open session writes more often than this.
constexpr int64_t kLongestSilence = 60 * kSecond;
constexpr int64_t kYear = 300 * 24 * 3600 * kSecond; ///< so much back is a new year

uint64_t countOf(const LogCounts& counts, TraceLevel level) {
    return counts.of_level[static_cast<size_t>(level)];
}

} // namespace

const char* nameOf(LossKind kind) {
    static constexpr const char* kNames[] = {"levels-missing",
                                             "chatty",
                                             "cut-line",
                                             "gap",
                                             "time-jump",
                                             "end-without-begin",
                                             "begin-without-end",
                                             "command-without-reply",
                                             "reply-without-command",
                                             "not-known",
                                             "damaged"};
    return kNames[static_cast<size_t>(kind)];
}

void Coverage::mark(LossKind kind, uint64_t line, const std::string& text) {
    Loss& loss = losses_[kind];
    if (loss.count++ == 0) {
        loss.kind = kind;
        loss.line = line;
        loss.text = text;
    }
}

void Coverage::unmatched(const sessions::UnmatchedLine& unmatched) {
    mark(unmatched.has_begin ? LossKind::kBeginWithoutEnd : LossKind::kEndWithoutBegin,
         unmatched.where.line,
         unmatched.where.function +
             (unmatched.has_begin ? "() begins and does not end" : "() ends and does not begin"));
}

void Coverage::line(const LogLine& line) {
    switch (line.kind) {
    case LogLineKind::kDropped:
        dropped_ += line.dropped;
        mark(LossKind::kChatty, line.first, "the log says that it dropped lines");
        break;
    case LogLineKind::kNotKnown:
        if (!line.cut) {
            mark(LossKind::kNotKnown, line.first,
                 "a line that this version of the bridge cannot write");
        }
        break;
    case LogLineKind::kShortened:
        mark(LossKind::kCutLine, line.first, "the end of a line is missing");
        break;
    case LogLineKind::kSection:
        begins_another_ = true;
        break;
    case LogLineKind::kTrace:
        // Attaching a thread or making an object is reported at INFO.
        expects_info_ = expects_info_ || line.trace.function == "getJNIEnv" ||
                        line.trace.function == "CallMethod";
        break;
    case LogLineKind::kCopy:
    case LogLineKind::kForeign:
        break;
    }
    if (line.cut && line.kind != LogLineKind::kShortened) {
        mark(LossKind::kCutLine, line.first, "a line is cut where the log begins or ends");
    }
    time(line);
}

void Coverage::time(const LogLine& line) {
    if (!line.header.time) {
        return;
    }
    sessions::LogTime now = *line.header.time;
    if (last_ && !begins_another_) {
        const int64_t passed = now.nanoseconds - last_->nanoseconds;
        if (passed < -kMostBack && !(passed < -kYear && !now.has_year)) {
            last_jump_ = line.first;
            mark(LossKind::kTimeJump, line.first,
                 "the clock goes back by " + durationText(-passed));
        } else if (passed > kLongestSilence) {
            last_jump_ = line.first;
            mark(LossKind::kGap, line.first,
                 durationText(passed) + " without a line, or the clock was set forward");
        }
    }
    begins_another_ = false;
    last_ = now;
    if (line.kind <= LogLineKind::kShortened) {
        begin_ = begin_ ? begin_ : now;
        end_ = now;
    }
}

std::vector<Loss> Coverage::losses(const LogCounts& counts) const {
    std::vector<Loss> all;
    std::string missing;
    if (counts.of_bridge > 0) {
        for (const TraceLevel level : {TraceLevel::kFuncStart, TraceLevel::kFuncEnd,
                                       TraceLevel::kInfo, TraceLevel::kDebug}) {
            if (countOf(counts, level) == 0 && (level != TraceLevel::kInfo || expects_info_)) {
                missing += std::string(missing.empty() ? "" : ", ") + sessions::nameOf(level);
            }
        }
    }
    if (!missing.empty()) {
        all.push_back({LossKind::kLevelsMissing, 1, 0, "there is no line of " + missing});
    }
    for (const auto& [kind, loss] : losses_) {
        // Without the ends, or what explains that one is missing, a begin says nothing.
        const bool levels = countOf(counts, TraceLevel::kFuncStart) > 0 &&
                            countOf(counts, TraceLevel::kFuncEnd) > 0 &&
                            countOf(counts, TraceLevel::kDebug) > 0;
        if ((kind == LossKind::kBeginWithoutEnd || kind == LossKind::kEndWithoutBegin) && !levels) {
            continue;
        }
        all.push_back(loss);
        if (kind == LossKind::kChatty) {
            all.back().text = "the log dropped " + countText(dropped_, "line") + " or more";
        }
    }
    return all;
}

} // namespace explain
