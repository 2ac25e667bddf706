// Puts a timeline together from messages, calls and lines, in the order of the file.
#pragma once

#include "desk/pictures/timeline.h"
#include "desk/show/filter.h"

#include "sessions/log/activity.h"
#include "sessions/log/log_reader.h"

#include <map>
#include <tuple>
#include <unordered_map>

namespace pictures {

class Builder {
public:
    /// Both must outlive the object.
    Builder(const show::Filter& filter, Timeline& timeline)
        : filter_(filter), timeline_(timeline) {}

    /// The messages that follow are of another run of the process.
    void beginRun();

    /// Of a capture: the message is a span as well, as long as the capture says.
    void add(const sessions::Message& message);
    /// In place of a packet that is no message.
    void pass();

    /// Of a log: a message of a call whose end is still to come.
    void addOfCall(sessions::Message message, const sessions::BridgeCall& call);
    void endCall(const sessions::BridgeCall& call);
    void addLine(const sessions::LogLine& line);

    void damage(const std::string& what);

    /// After the last one.
    void end();

private:
    size_t threadOf(uint32_t id, const std::string& name);
    bool keep(const sessions::Message& message, const sessions::Link& link, size_t thread);
    int64_t timeOf(const std::optional<sessions::LogTime>& time, uint64_t line);

    const show::Filter& filter_;
    Timeline& timeline_;
    sessions::Pairing pairing_;
    uint32_t run_ = 0;
    std::map<std::tuple<uint32_t, uint32_t, std::string>, size_t> threads_;
    /// By number of the message: its span, while an answer or a refusal may come.
    std::unordered_map<uint64_t, size_t> spans_;
    /// By number of the call: the first message of it that was kept.
    std::unordered_map<uint64_t, uint64_t> messages_of_calls_;
};

} // namespace pictures
