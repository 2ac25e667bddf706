#include "sessions/pairing.h"

#include "records/message_ids.h"

#include <algorithm>

namespace sessions {
namespace {

using Kind = Message::Kind;

constexpr int64_t kNanosecondsPerSecond = 1000000000;

/// The handle that a message carries, where its record has one and reaches to its end.
std::optional<uint16_t> handleOf(const Message& message, const catalogue::Message* known) {
    const catalogue::Record* layout = layoutOf(message, known);
    if (layout == nullptr) {
        return std::nullopt;
    }
    const std::optional<int64_t> handle = numberIn(*layout, message, "handle");
    return handle ? std::optional<uint16_t>(static_cast<uint16_t>(*handle)) : std::nullopt;
}

bool hasHandle(const catalogue::Record& record) {
    return std::any_of(record.fields.begin(), record.fields.end(),
                       [](const catalogue::Field& field) { return field.name == "handle"; });
}

/// Whether the command of that reply event has no handle, so that the event's is not compared.
bool isOfCommandWithoutHandle(int event) {
    static const std::vector<int> events = [] {
        std::vector<int> found;
        for (const catalogue::Message& command : catalogue::commands()) {
            if (command.reply_event != 0 && !hasHandle(*command.record)) {
                found.push_back(command.reply_event);
            }
        }
        return found;
    }();
    return std::find(events.begin(), events.end(), event) != events.end();
}

} // namespace

std::optional<int64_t> nanosecondsBetween(const Moment& from, const Moment& to) {
    int64_t seconds = 0;
    int64_t nanoseconds = 0;
    if (__builtin_sub_overflow(to.seconds, from.seconds, &seconds) ||
        __builtin_mul_overflow(seconds, kNanosecondsPerSecond, &nanoseconds) ||
        __builtin_add_overflow(nanoseconds, int64_t{to.nanoseconds} - int64_t{from.nanoseconds},
                               &nanoseconds)) {
        return std::nullopt;
    }
    return nanoseconds;
}

Link Pairing::add(const Message& message) {
    const catalogue::Message* known = catalogue::find(message.id);
    Link link;
    link.number = ++count_;
    link.session = handleOf(message, known);
    if (message.is(Kind::kCommand)) {
        addCommand(message, known, link);
    } else if (message.is(Kind::kAnswer)) {
        addAnswer(message, link);
    } else if (message.is(Kind::kEvent)) {
        addEvent(message, link);
    } else if (message.is(Kind::kRefusedEvent)) {
        addRefusal(message, link);
    }
    return link;
}

void Pairing::addCommand(const Message& message, const catalogue::Message* known, Link& link) {
    Sent sent;
    sent.command = {link.number, message.id, link.session, message.thread_id, message.time, false};
    if (known != nullptr && known->reply != nullptr) {
        synchronous_[link.number] = sent.command;
    } else if (known != nullptr && known->reply_event != 0) {
        // Whose handle is missing is never answered: no event has none.
        sent.awaited = Awaited{known->reply_event, link.session};
        std::deque<Waiting>& queue = waiting_[*sent.awaited];
        // The others before the last one are ambiguous already.
        const bool rival = !queue.empty() && (link.session || !hasHandle(*known->record));
        Waiting waiting{sent.command, rival && queue.back().command.ambiguous};
        waiting.command.ambiguous = rival;
        if (rival) {
            queue.back().command.ambiguous = true;
        }
        queue.push_back(waiting);
        ++waiting_count_;
    }
    threads_[message.thread_id].command = std::move(sent);
}

void Pairing::addAnswer(const Message& message, Link& link) {
    std::optional<Sent>& sent = threads_[message.thread_id].command;
    if (!sent || sent->command.id != message.id) {
        return;
    }
    link.partner = sent->command.number;
    link.latency = nanosecondsBetween(sent->command.time, message.time);
    if (!link.session) {
        link.session = sent->command.session;
    }
    synchronous_.erase(sent->command.number);
    if (message.value != 0) {
        forget(*sent);
    }
    sent.reset();
    endSession(message, link);
}

/// A command that was not taken waits for no event.
void Pairing::forget(const Sent& sent) {
    given_up_.erase(sent.command.number);
    const auto queue = sent.awaited ? waiting_.find(*sent.awaited) : waiting_.end();
    if (queue == waiting_.end()) {
        return;
    }
    std::deque<Waiting>& commands = queue->second;
    const auto found =
        std::find_if(commands.rbegin(), commands.rend(), [&sent](const Waiting& waiting) {
            return waiting.command.number == sent.command.number;
        });
    if (found == commands.rend()) {
        return;
    }
    if (found == commands.rbegin() && commands.size() > 1) {
        commands[commands.size() - 2].command.ambiguous = found->before_was_ambiguous;
    }
    commands.erase(std::next(found).base());
    --waiting_count_;
    if (commands.empty()) {
        waiting_.erase(queue);
    }
}

void Pairing::addEvent(const Message& message, Link& link) {
    std::optional<uint16_t> handle = link.session;
    const bool any = isOfCommandWithoutHandle(message.id);
    if (any) {
        handle.reset();
    }
    auto queue = waiting_.end();
    bool guessed = false;
    if (any || handle) {
        queue = waiting_.find(Awaited{message.id, handle});
    } else if (!message.known.empty()) {
        queue = oldestWaiting(message.id, guessed);
    }
    if (queue != waiting_.end()) {
        const OpenCommand command = queue->second.front().command;
        link.partner = command.number;
        link.latency = nanosecondsBetween(command.time, message.time);
        link.ambiguous = command.ambiguous || guessed;
        if (!link.session) {
            link.session = command.session;
        }
        queue->second.pop_front();
        --waiting_count_;
        if (queue->second.empty()) {
            waiting_.erase(queue);
        }
    }
    threads_[message.thread_id].event =
        Delivered{link.number, message.id, link.session, message.time};
    endSession(message, link);
}

/// The queue with the oldest command that waits for an event, whatever its handle. `guessed` says
/// that there are several.
Pairing::Queues::iterator Pairing::oldestWaiting(int event, bool& guessed) {
    auto oldest = waiting_.end();
    for (auto queue = waiting_.lower_bound(Awaited{event, std::nullopt});
         queue != waiting_.end() && queue->first.first == event; ++queue) {
        guessed = oldest != waiting_.end();
        if (!guessed ||
            queue->second.front().command.number < oldest->second.front().command.number) {
            oldest = queue;
        }
    }
    return oldest;
}

/// If the message ends a session, or begins one with the handle of an earlier one.
void Pairing::endSession(const Message& message, const Link& link) {
    const bool release =
        message.id == event_id::kReleaseReply || message.id == command_id::kRelease_Sync;
    if (!link.session || !(release || message.id == event_id::kCreateReply) || message.value != 0) {
        return;
    }
    const catalogue::Record* layout = layoutOf(message, catalogue::find(message.id));
    const char* result = message.is(Kind::kAnswer) ? "return_value" : "result";
    if (layout != nullptr && numberIn(*layout, message, result) == 0) {
        giveUp(*link.session, release && link.partner != 0 ? link.partner : link.number);
    }
}

/// The commands of a session that wait for an event and have a smaller number.
void Pairing::giveUp(uint16_t handle, uint64_t before) {
    for (const catalogue::Message& command : catalogue::commands()) {
        const auto queue = waiting_.find(Awaited{command.reply_event, handle});
        if (queue == waiting_.end()) {
            continue;
        }
        std::deque<Waiting>& commands = queue->second;
        while (!commands.empty() && commands.front().command.number < before) {
            const OpenCommand& given_up = commands.front().command;
            given_up_.emplace(given_up.number, given_up);
            commands.pop_front();
            --waiting_count_;
        }
        if (commands.empty()) {
            waiting_.erase(queue);
        }
    }
}

void Pairing::keepWaiting(size_t most, GiveUp which) {
    const auto number = [which](const std::deque<Waiting>& queue) {
        return which == GiveUp::kOldest ? queue.front().command.number
                                        : UINT64_MAX - queue.back().command.number;
    };
    while (waiting_count_ > most) {
        const auto chosen = std::min_element(waiting_.begin(), waiting_.end(),
                                             [&number](const auto& one, const auto& other) {
                                                 return number(one.second) < number(other.second);
                                             });
        std::deque<Waiting>& queue = chosen->second;
        const OpenCommand& command =
            which == GiveUp::kOldest ? queue.front().command : queue.back().command;
        given_up_.emplace(command.number, command);
        if (which == GiveUp::kOldest) {
            queue.pop_front();
        } else {
            queue.pop_back();
        }
        --waiting_count_;
        if (queue.empty()) {
            waiting_.erase(chosen);
        }
    }
}

void Pairing::beginSection() {
    for (const OpenCommand& command : open()) {
        given_up_.emplace(command.number, command);
    }
    waiting_.clear();
    waiting_count_ = 0;
    synchronous_.clear();
    threads_.clear();
}

void Pairing::addRefusal(const Message& message, Link& link) {
    std::optional<Delivered>& event = threads_[message.thread_id].event;
    if (!event || event->id != message.id) {
        return;
    }
    link.partner = event->number;
    link.latency = nanosecondsBetween(event->time, message.time);
    link.session = event->session;
    event.reset();
}

std::vector<OpenCommand> Pairing::takeGivenUp() {
    std::vector<OpenCommand> commands;
    for (const auto& [number, command] : given_up_) {
        commands.push_back(command);
    }
    given_up_.clear();
    return commands;
}

std::vector<OpenCommand> Pairing::open() const {
    std::vector<OpenCommand> commands;
    for (const auto* others : {&synchronous_, &given_up_}) {
        for (const auto& [number, command] : *others) {
            commands.push_back(command);
        }
    }
    for (const auto& [awaited, queue] : waiting_) {
        for (const Waiting& waiting : queue) {
            commands.push_back(waiting.command);
        }
    }
    std::sort(
        commands.begin(), commands.end(),
        [](const OpenCommand& one, const OpenCommand& other) { return one.number < other.number; });
    return commands;
}

} // namespace sessions
