// What commands need to have happened in their session before.
#pragma once

#include "sessions/message.h"

#include <set>
#include <string_view>

namespace explain {

/// Follows one session from its CreateReply on.
class SessionOrder {
public:
    /// Whether what a command needs has happened; true for a command that needs nothing.
    bool allows(const sessions::Message& command) const;

    /// A message of the session has passed.
    void pass(const sessions::Message& message);

private:
    std::set<int> happened_; ///< ids of commands that were sent, and of events that arrived
    std::set<int64_t> released_planes_; ///< by number
    bool captions_run_ = false;         ///< the last command about them turned them on
    bool browser_runs_ = false;         ///< the same of the BML browser
};

/// Whether a command cannot succeed in a session where the other one failed, by their names.
bool dependsOn(std::string_view command, std::string_view needed);

} // namespace explain
