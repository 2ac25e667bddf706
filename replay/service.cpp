// The commands of a replay: their answers, and what the player sends.
#include "replay/service.h"

#include "replay/commands.h"
#include "replay/here.h"

#include <algorithm>
#include <atomic>
#include <utility>

namespace replay {
namespace {

using sessions::Message;
using Kind = Message::Kind;

constexpr int kTaken = 0;
constexpr int kNotTaken = 1;

uint64_t nextRun() {
    static std::atomic<uint64_t> runs{0};
    return ++runs;
}

} // namespace

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
        {Difference::kUnexpectedCommand, sequence_.next(), givenOf(command), ""});
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
