// Which recorded command each one is that comes.
#include "replay/commands.h"
#include "replay/here.h"
#include "replay/service.h"

#include <algorithm>

namespace replay {
namespace {

using sessions::Message;
using Kind = Message::Kind;

/// How many commands of a thread may be missing before one that is known.
constexpr size_t kLookAhead = 8;

std::string withoutDigits(std::string name) {
    name.erase(std::remove_if(name.begin(), name.end(),
                              [](char character) { return character >= '0' && character <= '9'; }),
               name.end());
    return name;
}

} // namespace

/// The recorded command that this one is, by its thread: the next one there, also with other bytes;
/// or one of the next few, when those before it are left out. kNone when it is none of them.
size_t Service::match(const dtv::Command& command) {
    const size_t thread = threadHere();
    const size_t next = thread != kNone ? nextEntry(thread) : kNone;
    if (next == kNone || !isCommand(next)) {
        return kNone;
    }
    const Message& recorded = recording_.entries[next].message;
    if (isSame(recorded, command)) {
        return next;
    }
    if (recorded.id == command.message_id) {
        outcome_.divergences.add({Difference::kOtherBytes, next, givenOf(command), ""});
        return next;
    }
    const size_t found = findAhead(thread, command);
    while (found != kNone && nextEntry(thread) != found) {
        skipCommand(nextEntry(thread), "");
    }
    return found;
}

/// The next command of a thread that is the same as this one. Not beyond an event.
size_t Service::findAhead(size_t thread, const dtv::Command& command) const {
    const std::vector<size_t>& entries = recording_.threads[thread].entries;
    size_t seen = 0;
    for (size_t place = tracks_[thread].place; place < entries.size() && seen < kLookAhead;
         ++place) {
        const Message& message = recording_.entries[entries[place]].message;
        if (message.is(Kind::kEvent) || message.is(Kind::kRefusedEvent)) {
            break;
        }
        if (isSame(message, command) && message.is(Kind::kCommand)) {
            return entries[place];
        }
        seen += message.is(Kind::kCommand) ? 1 : 0;
    }
    return kNone;
}

/// The recorded thread whose part the calling thread has, which it takes when it has none yet;
/// kNone when no recorded thread is left for it.
size_t Service::threadHere() {
    here::Thread& current = here::current();
    if (current.run != run_) {
        current = {run_, threadNamed(here::threadName()), kNone};
        if (current.thread != kNone) {
            tracks_[current.thread].taken = true;
        }
    }
    return current.thread;
}

/// By its name, then by its name without numbers, then in the order in which they appear. A further
/// thread of a name shares the part of the last one: the numbers of threads that have ended are
/// given again.
size_t Service::threadNamed(const std::string& name) const {
    size_t same = kNone;
    size_t alike = kNone;
    size_t any = kNone;
    for (size_t index = 0; index < tracks_.size(); ++index) {
        const Thread& thread = recording_.threads[index];
        if (thread.delivers) {
            continue;
        }
        const bool is_free = !tracks_[index].taken;
        if (thread.name == name) {
            if (is_free) {
                return index;
            }
            same = index;
        } else if (is_free && alike == kNone && withoutDigits(thread.name) == withoutDigits(name)) {
            alike = index;
        } else if (is_free && any == kNone) {
            any = index;
        }
    }
    return same != kNone ? same : alike != kNone ? alike : any;
}

} // namespace replay
