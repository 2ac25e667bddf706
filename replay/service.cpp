// The commands of a replay: which recorded one each of them is, and its answer.
#include "replay/service.h"

#include "replay/here.h"

#include <algorithm>
#include <atomic>
#include <cstring>
#include <utility>

namespace replay {
namespace {

using sessions::Message;
using Kind = Message::Kind;

constexpr int kTaken = 0;
constexpr int kNotTaken = 1;

/// How many commands of a thread may be missing before one that is known.
constexpr size_t kLookAhead = 8;

uint64_t nextRun() {
    static std::atomic<uint64_t> runs{0};
    return ++runs;
}

int surfacesOf(const dtv::Command& command) {
    const int count = command.references != nullptr ? command.references->surface_count : 0;
    return std::clamp(count, 0, 255);
}

sessions::Bytes recordOf(const dtv::Command& command) {
    const bool has_bytes = command.data != nullptr && command.size > 0;
    return {static_cast<const uint8_t*>(command.data),
            has_bytes ? static_cast<size_t>(command.size) : 0};
}

bool isSame(const Message& recorded, const dtv::Command& command) {
    const sessions::Bytes record = recordOf(command);
    return recorded.id == command.message_id && recorded.size == command.size &&
           recorded.surfaces == surfacesOf(command) && recorded.record.size() == record.size &&
           (record.size == 0 || std::memcmp(recorded.record.data(), record.data, record.size) == 0);
}

Given given(const dtv::Command& command) {
    const sessions::Bytes record = recordOf(command);
    Given given;
    given.id = command.message_id;
    given.size = command.size;
    given.surfaces = surfacesOf(command);
    given.record.assign(record.data, record.data + record.size);
    given.thread = here::threadName();
    return given;
}

std::string withoutDigits(std::string name) {
    name.erase(std::remove_if(name.begin(), name.end(),
                              [](char character) { return character >= '0' && character <= '9'; }),
               name.end());
    return name;
}

void writeReply(const Message& answer, const dtv::Reply& reply) {
    const auto room = static_cast<size_t>(std::max(reply.capacity, 0));
    const size_t size = std::min(answer.record.size(), room);
    if (reply.data != nullptr && size > 0) {
        std::memcpy(reply.data, answer.record.data(), size);
    }
    if (reply.size != nullptr) {
        *reply.size = answer.size;
    }
}

} // namespace

size_t Divergences::total() const {
    size_t total = 0;
    for (const size_t count : counts) {
        total += count;
    }
    return total;
}

Service::Service(Recording recording, Settings settings)
    : recording_(std::move(recording)), settings_(std::move(settings)), run_(nextRun()),
      sequence_(recording_, settings_.pace), tracks_(recording_.threads.size()) {}

int Service::onCommand(const dtv::Command& command) {
    return take(command, nullptr);
}

int Service::onSynchronousCommand(const dtv::Command& command, const dtv::Reply& reply) {
    return take(command, &reply);
}

int Service::take(const dtv::Command& command, const dtv::Reply* reply) {
    std::unique_lock<std::mutex> lock(mutex_);
    if (sequence_.hasEnded()) {
        return kNotTaken;
    }
    begin();
    const size_t entry = match(command);
    if (entry != kNone) {
        return answer(lock, entry, reply);
    }
    outcome_.divergences.add(
        {Difference::kUnexpectedCommand, sequence_.next(), given(command), ""});
    lock.unlock();
    if (settings_.unknown == nullptr) {
        return kNotTaken;
    }
    return reply != nullptr ? settings_.unknown->onSynchronousCommand(command, *reply)
                            : settings_.unknown->onCommand(command);
}

/// What the sender of a recorded command gets. It waits for its turn where the capture has an
/// answer.
int Service::answer(std::unique_lock<std::mutex>& lock, size_t command, const dtv::Reply* reply) {
    pass(command);
    const size_t answer = recording_.entries[command].reply;
    if (answer == kNone) {
        // The capture of a synchronous command may end before its answer.
        return reply != nullptr ? kNotTaken : kTaken;
    }
    if (!sequence_.waitForTurn(lock, answer)) {
        return kNotTaken;
    }
    const Message& recorded = recording_.entries[answer].message;
    if (reply != nullptr) {
        writeReply(recorded, *reply);
    }
    here::current().returning = answer;
    return recorded.value;
}

void Service::onReturned(int) {
    here::Thread& thread = here::current();
    if (thread.run == run_ && thread.returning != kNone) {
        const std::lock_guard<std::mutex> lock(mutex_);
        pass(std::exchange(thread.returning, kNone));
    }
}

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
        outcome_.divergences.add({Difference::kOtherBytes, next, given(command), ""});
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

size_t Service::nextEntry(size_t thread) const {
    const std::vector<size_t>& entries = recording_.threads[thread].entries;
    const size_t place = tracks_[thread].place;
    return place < entries.size() ? entries[place] : kNone;
}

bool Service::isCommand(size_t entry) const {
    return entry != kNone && recording_.entries[entry].message.is(Kind::kCommand);
}

/// A message passes; its thread is at the one after it, and after the answer to it.
void Service::pass(size_t entry, bool came) {
    const Entry& passed = recording_.entries[entry];
    size_t& place = tracks_[passed.thread].place;
    place = std::max(place, passed.place + 1);
    if (passed.message.is(Kind::kCommand) && passed.reply != kNone) {
        place = std::max(place, recording_.entries[passed.reply].place + 1);
    }
    sequence_.pass(entry, came);
    startDelivery();
}

/// A recorded command does not come, and so its answer does not either.
void Service::skipCommand(size_t entry, const std::string& reason) {
    outcome_.divergences.add({Difference::kMissingCommand, entry, std::nullopt, reason});
    const size_t answer = recording_.entries[entry].reply;
    pass(entry, false);
    if (answer != kNone) {
        pass(answer, false);
    }
}

Outcome Service::finish() {
    std::unique_lock<std::mutex> lock(mutex_);
    begin();
    sequence_.waitForAll(lock);
    const bool all_returned =
        delivered_.wait_for(lock, settings_.pace.patience, [this] { return deliverers_ == 0; });
    const std::optional<size_t> stalled = sequence_.stalledAt();
    if (stalled && isCommand(*stalled)) {
        outcome_.divergences.add({Difference::kMissingCommand, *stalled, std::nullopt, ""});
    } else if (stalled || !all_returned) {
        const size_t last = recording_.entries.size() - 1;
        outcome_.divergences.add({Difference::kUnfinishedEvent,
                                  std::min(stalled.value_or(last), last), std::nullopt, ""});
    }
    outcome_.stalled = stalled.has_value();
    outcome_.passed = sequence_.passedCount();
    sequence_.end();
    return outcome_;
}

void Service::end() {
    const std::lock_guard<std::mutex> lock(mutex_);
    sequence_.end();
}

std::vector<size_t> Service::senders() const {
    std::vector<size_t> senders;
    for (size_t index = 0; index < recording_.threads.size(); ++index) {
        if (!recording_.threads[index].delivers) {
            senders.push_back(index);
        }
    }
    return senders;
}

void Service::enter(size_t thread) {
    const std::lock_guard<std::mutex> lock(mutex_);
    begin();
    here::current() = {run_, thread, kNone};
    tracks_[thread].taken = true;
}

size_t Service::nextCommand() {
    std::unique_lock<std::mutex> lock(mutex_);
    const size_t thread = threadHere();
    const size_t next = thread != kNone ? nextEntry(thread) : kNone;
    return isCommand(next) && sequence_.waitForTurn(lock, next) ? next : kNone;
}

bool Service::hasCome(size_t entry) {
    const std::lock_guard<std::mutex> lock(mutex_);
    return sequence_.hasPassed(entry);
}

void Service::giveUp(size_t entry, const std::string& reason) {
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!sequence_.hasEnded()) {
        skipCommand(entry, reason);
    }
}

} // namespace replay
