#include "desk/explain/story.h"

#include "records/message_ids.h"

namespace explain {
namespace {

using Kind = sessions::Message::Kind;

std::string channelOf(const sessions::Message& message) {
    const catalogue::Record* const layout =
        sessions::layoutOf(message, catalogue::find(message.id));
    if (layout == nullptr) {
        return {};
    }
    const auto channel = sessions::numberIn(*layout, message, "physical_channel");
    return channel ? std::to_string(*channel) : std::string();
}

} // namespace

SessionStory* Story::find(int handle, uint64_t line) {
    const auto found = current_.find(handle);
    if (found != current_.end()) {
        return found->second < kMostSessions ? &sessions_[found->second] : nullptr;
    }
    if (sessions_.size() == kMostSessions) {
        ++more_;
        current_[handle] = kMostSessions;
        return nullptr;
    }
    current_[handle] = sessions_.size();
    sessions_.emplace_back();
    sessions_.back().handle = handle;
    sessions_.back().first = line;
    return &sessions_.back();
}

void Story::opened(int handle, uint64_t line) {
    current_.erase(handle);
    if (SessionStory* const session = find(handle, line)) {
        session->opened = line;
        session->last = line;
    }
}

void Story::closed(int handle, uint64_t line) {
    if (SessionStory* const session = find(handle, line)) {
        session->closed = line;
        session->last = line;
    }
    current_.erase(handle);
}

void Story::message(const sessions::Message& message, const sessions::Link& link, uint64_t line) {
    if (!link.session || !(message.is(Kind::kCommand) || message.is(Kind::kEvent))) {
        return;
    }
    SessionStory* const session = find(*link.session, line);
    if (session == nullptr) {
        return;
    }
    session->last = line;
    if (message.is(Kind::kEvent)) {
        ++session->events;
        return;
    }
    ++session->commands;
    if (message.id == command_id::kSelectChannel ||
        message.id == command_id::kStartBroadcastReceiving) {
        ++session->selections;
        const std::string channel = channelOf(message);
        if (!channel.empty() && session->selected.size() < kMostChannels) {
            session->selected.push_back(channel);
        }
    } else if (message.id == command_id::kStartRec) {
        ++session->recordings;
    } else if (message.id == command_id::kStartPlay) {
        ++session->playbacks;
    }
}

} // namespace explain
