#include "replay/recording.h"

#include "sessions/known_bytes.h"

#include <algorithm>
#include <map>
#include <tuple>
#include <utility>

namespace replay {
namespace {

using sessions::Message;
using Kind = Message::Kind;

bool isReply(const Message& message) {
    return message.is(Kind::kAnswer) || message.is(Kind::kRefusedEvent);
}

/// Puts the messages into a recording, one after the other.
class Recorder {
public:
    explicit Recorder(Recording& recording) : recording_(recording) {}

    void add(Message message, bool incomplete) {
        Entry entry;
        entry.link = pairing_.add(message);
        ++recording_.messages;
        entry.incomplete = incomplete || message.left_out > 0;
        entry.message = std::move(message);
        if (!place(entry)) {
            ++recording_.left_out;
            return;
        }
        entry.due = dueOf(entry.message.time);
        recording_.entries.push_back(std::move(entry));
    }

private:
    /// A thread of the capture by number and name: the kernel gives a number to another thread
    /// later. What it sent before its first event was not sent by a callback, and has a thread of
    /// its own.
    using Key = std::tuple<uint32_t, std::string, bool>;

    /// Finds the thread of an entry, and the entry that it replies to. False when it belongs to
    /// nothing.
    bool place(Entry& entry) {
        const Message& message = entry.message;
        if (isReply(message)) {
            return placeReply(entry);
        }
        if (!message.is(Kind::kCommand) && !message.is(Kind::kEvent)) {
            return false;
        }
        const bool delivers = message.is(Kind::kEvent) || deliversAlready(message);
        const Key key{message.thread_id, message.thread_name, delivers};
        const auto known = threads_.find(key);
        join(entry, known != threads_.end() ? known->second : addThread(key));
        return true;
    }

    /// An answer or a refusal is on the thread of what it replies to.
    bool placeReply(Entry& entry) {
        std::vector<Entry>& entries = recording_.entries;
        const auto partner = std::lower_bound(
            entries.begin(), entries.end(), entry.link.partner,
            [](const Entry& other, uint64_t number) { return other.link.number < number; });
        if (partner == entries.end() || partner->link.number != entry.link.partner) {
            return false;
        }
        partner->reply = entries.size();
        join(entry, partner->thread);
        return true;
    }

    bool deliversAlready(const Message& message) const {
        return threads_.count(Key{message.thread_id, message.thread_name, true}) != 0;
    }

    size_t addThread(const Key& key) {
        const size_t index = recording_.threads.size();
        recording_.threads.push_back({std::get<std::string>(key), std::get<bool>(key), {}});
        threads_.emplace(key, index);
        return index;
    }

    void join(Entry& entry, size_t thread) {
        std::vector<size_t>& entries = recording_.threads[thread].entries;
        entry.thread = thread;
        entry.place = entries.size();
        entries.push_back(recording_.entries.size());
    }

    std::chrono::nanoseconds dueOf(const sessions::Moment& time) {
        if (recording_.entries.empty()) {
            first_ = time;
            return last_due_;
        }
        const auto since = sessions::nanosecondsBetween(first_, time);
        last_due_ = std::max(last_due_, std::chrono::nanoseconds(since.value_or(0)));
        return last_due_;
    }

    Recording& recording_;
    sessions::Pairing pairing_;
    std::map<Key, size_t> threads_;
    sessions::Moment first_;
    std::chrono::nanoseconds last_due_{0};
};

bool hasCommandOrEvent(const Recording& recording) {
    return std::any_of(recording.entries.begin(), recording.entries.end(),
                       [](const Entry& entry) { return !isReply(entry.message); });
}

} // namespace

std::optional<Recording> readRecording(std::istream& file, std::string& error) {
    sessions::CaptureReader reader(file);
    Recording recording;
    Recorder recorder(recording);
    while (std::optional<sessions::Packet> packet = reader.next()) {
        if (recording.messages == 0) {
            recording.section = reader.section();
        }
        std::optional<Message> message = sessions::readMessage(*packet, error);
        if (!message) {
            return std::nullopt;
        }
        const bool incomplete =
            sessions::valueOf(packet->notes, sessions::kIncompleteNote) != nullptr;
        recorder.add(std::move(*message), incomplete);
    }
    error = reader.error();
    if (error.empty() && !hasCommandOrEvent(recording)) {
        error = "it holds no message: a replay of it would show nothing";
    }
    if (!error.empty()) {
        return std::nullopt;
    }
    return recording;
}

const catalogue::Record* layoutOf(const Entry& entry) {
    return sessions::layoutOf(entry.message, catalogue::find(entry.message.id));
}

} // namespace replay
