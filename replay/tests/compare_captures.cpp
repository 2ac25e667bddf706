// Whether a capture of replays is the same as the captures that were replayed, but for times and
// the numbers of threads.
//
//     compare_captures REPLAYED LIST
//
// LIST is a file with the names of the captures, in the order in which they were replayed in one
// process. Exit status 0 when all messages are the same.
#include "sessions/capture_reader.h"
#include "sessions/message.h"

#include "records/catalogue.h"

#include <algorithm>
#include <cinttypes>
#include <cstdio>
#include <fstream>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace {

using sessions::Message;

/// The messages of a file, one after the other.
class Messages {
public:
    explicit Messages(std::string name)
        : name_(std::move(name)), file_(name_, std::ios::binary), reader_(file_) {}

    std::optional<Message> next() {
        const auto packet = reader_.next();
        std::string error = reader_.error();
        std::optional<Message> message;
        if (packet) {
            message = sessions::readMessage(*packet, error);
            ++count_;
        }
        if (!error.empty()) {
            std::printf("%s: %s\n", name_.c_str(), error.c_str());
            failed_ = true;
            return std::nullopt;
        }
        return message;
    }

    const sessions::Notes& section() const { return reader_.section(); }
    uint64_t count() const { return count_; }
    bool failed() const { return failed_; }

private:
    const std::string name_;
    std::ifstream file_;
    sessions::CaptureReader reader_;
    uint64_t count_ = 0;
    bool failed_ = false;
};

bool isSame(const Message& one, const Message& other) {
    return one.kind == other.kind && one.surfaces == other.surfaces &&
           one.reserved == other.reserved && one.id == other.id && one.value == other.value &&
           one.size == other.size && one.thread_name == other.thread_name &&
           one.record == other.record && one.left_out == other.left_out;
}

/// Whether threads have one partner each.
class Threads {
public:
    bool match(uint32_t recorded, uint32_t replayed) {
        return forth_.emplace(recorded, replayed).first->second == replayed &&
               back_.emplace(replayed, recorded).first->second == recorded;
    }

private:
    std::map<uint32_t, uint32_t> forth_;
    std::map<uint32_t, uint32_t> back_;
};

/// What was compared.
struct Sum {
    uint64_t messages = 0;
    uint64_t captures = 0;
    std::set<int> commands; ///< their numbers
    std::set<int> events;
};

bool hasAll(const std::vector<catalogue::Message>& messages, const std::set<int>& ids) {
    return std::all_of(messages.begin(), messages.end(), [&ids](const catalogue::Message& message) {
        return ids.count(message.id) != 0;
    });
}

/// Compares the messages of one capture with the next ones of the replay's.
bool compare(const std::string& name, Messages& replayed, Sum& sum) {
    Messages recorded(name);
    Threads threads;
    while (const std::optional<Message> message = recorded.next()) {
        const std::optional<Message> other = replayed.next();
        if (!other) {
            std::printf("%s: message %" PRIu64 " is missing in the replay\n", name.c_str(),
                        recorded.count());
            return false;
        }
        if (!isSame(*message, *other) || !threads.match(message->thread_id, other->thread_id)) {
            std::printf("%s: message %" PRIu64 " differs from message %" PRIu64 " of the replay\n",
                        name.c_str(), recorded.count(), replayed.count());
            return false;
        }
        ++sum.messages;
        if (message->is(Message::Kind::kCommand)) {
            sum.commands.insert(message->id);
        } else if (message->is(Message::Kind::kEvent)) {
            sum.events.insert(message->id);
        }
    }
    if (sum.captures++ == 0 && recorded.section() != replayed.section()) {
        std::printf("%s: the section headers differ\n", name.c_str());
        return false;
    }
    return !recorded.failed();
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::fputs("usage: compare_captures REPLAYED LIST\n", stderr);
        return 2;
    }
    Messages replayed(argv[1]);
    std::ifstream list(argv[2]);
    Sum sum;
    for (std::string name; std::getline(list, name);) {
        if (!compare(name, replayed, sum)) {
            return 1;
        }
    }
    if (replayed.next() || replayed.failed()) {
        std::printf("the replay has more messages than the captures\n");
        return 1;
    }
    const bool all =
        hasAll(catalogue::commands(), sum.commands) && hasAll(catalogue::events(), sum.events);
    std::printf("%" PRIu64 " messages of %" PRIu64 " captures are the same%s\n", sum.messages,
                sum.captures, all ? ", every kind of command and of event among them" : "");
    return sum.messages > 0 ? 0 : 1;
}
