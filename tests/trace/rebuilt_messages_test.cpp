// The real bridge's messages, captured as they pass, beside those that are made of its trace: alike
// in every byte that the trace shows. What it does not show is in docs/log-capture.md.
#include "commands/every_command.h"
#include "trace/missing_fields.h"
#include "trace/random_values.h"

#include "sessions/capture_reader.h"
#include "sessions/log/log_capture.h"
#include "sessions/message.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

namespace {

using namespace harness;
using sessions::Message;
using trace_test::MissingFields;
using trace_test::Random;

namespace fs = std::filesystem;

constexpr int kRecords = 30; ///< of each message

/// The messages of a capture, in their order.
std::vector<Message> messagesIn(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    sessions::CaptureReader reader(file);
    std::vector<Message> messages;
    while (const auto packet = reader.next()) {
        std::string error;
        if (auto message = readMessage(*packet, error)) {
            messages.push_back(std::move(*message));
        }
        EXPECT_EQ(error, "");
    }
    EXPECT_EQ(reader.error(), "");
    return messages;
}

/// Sends every command, with arguments that are mostly taken.
void sendCommands(ServiceDouble& service, Random& random) {
    commands::NativeSurface surface;
    const size_t count =
        commands::everyCommand(surface.java(), surface.java(), surface.java()).size();
    for (size_t i = 0; i < count; ++i) {
        for (int time = 0; time < kRecords; ++time) {
            LocalFrame frame;
            commands::EveryCommand command =
                commands::everyCommand(surface.java(), surface.java(), surface.java())[i];
            for (size_t at = 0; at < command.arguments.size() && time > 0; ++at) {
                jobject object = command.arguments[at].as('L').l;
                if (object != nullptr) {
                    trace_test::randomize(object, random);
                } else if (at == 0 && command.name != "Create") {
                    command.arguments[at] = static_cast<int>(random() % 65536);
                } else {
                    command.arguments[at] = static_cast<int>(random() % 6);
                }
            }
            const catalogue::Message* const message = catalogue::find(command.name);
            if (message->reply != nullptr) {
                service.setReply(trace_test::randomRecord(*message->reply, random));
            }
            callNative("DtvSvLib_" + command.name, command.arguments);
        }
    }
}

void deliverEvents(Random& random) {
    for (const catalogue::Message& message : catalogue::events()) {
        for (int time = 0; time < kRecords; ++time) {
            LocalFrame frame;
            deliver(message.id, trace_test::randomRecord(*message.record, random));
        }
    }
}

/// One for each kind of message: "event ScanNotify".
std::string kindOf(const Message& message) {
    static constexpr const char* kKinds[] = {"", "command", "answer", "event", "refused event"};
    const catalogue::Message* const known = catalogue::find(message.id);
    return std::string(kKinds[message.kind]) + " " +
           (known != nullptr ? std::string(known->name) : "?");
}

std::string headOf(const Message& message) {
    return kindOf(message) + " of " + message.thread_name + ", value " +
           std::to_string(message.value) + ", size " + std::to_string(message.size) +
           ", surfaces " + std::to_string(message.surfaces) + ", " +
           std::to_string(message.record.size()) + " bytes";
}

/// Where a byte that is known differs from the real one, or nothing.
std::string difference(const Message& real, const Message& made) {
    for (size_t i = 0; i < std::min(real.record.size(), made.record.size()); ++i) {
        const bool known = made.known.empty() || made.known[i];
        if (known && real.record[i] != made.record[i]) {
            return "byte " + std::to_string(i) + " is " + std::to_string(real.record[i]) +
                   ", of the log " + std::to_string(made.record[i]);
        }
    }
    return "";
}

/// The rows of the table, by the message's number and kind.
class Table {
public:
    void take(const Message& made) {
        const catalogue::Message* const known = catalogue::find(made.id);
        const catalogue::Record* const layout = layoutOf(made, known);
        if (layout == nullptr) {
            return;
        }
        auto& missing = rows_.try_emplace({made.kind, made.id}, *layout).first->second;
        missing.take(made.known.empty() ? std::vector<bool>(made.record.size(), true) : made.known);
    }

    size_t size() const { return rows_.size(); }

    std::string text() const {
        std::string text =
            "| Message | Kind | Rebuilt | Not in the log |\n| --- | --- | --- | --- |\n";
        for (const auto& [key, missing] : rows_) {
            static constexpr const char* kKinds[] = {"", "command", "answer", "event"};
            std::string fields;
            for (const std::string& name : missing.names()) {
                fields += (fields.empty() ? "`" : ", `") + name + "`";
            }
            text += "| `" + std::string(catalogue::find(key.second)->name) + "` | " +
                    kKinds[key.first] + " | " + (fields.empty() ? "whole" : "in part") + " | " +
                    fields + " |\n";
        }
        return text;
    }

private:
    std::map<std::pair<uint8_t, int>, MissingFields> rows_;
};

constexpr char kBegin[] = "<!-- table -->\n";
constexpr char kEnd[] = "<!-- end of the table -->\n";

/// Holds the table of the page against that text; with DTV_REFRESH_PAGE it is put into the page.
void compareWithPage(const std::string& table) {
    std::ifstream file(DTV_LOG_CAPTURE_PAGE);
    std::string page{std::istreambuf_iterator<char>(file), {}};
    const size_t begin = page.find(kBegin);
    const size_t end = page.find(kEnd);
    ASSERT_NE(begin, std::string::npos);
    ASSERT_NE(end, std::string::npos);
    const size_t start = begin + sizeof kBegin - 1;
    if (std::getenv("DTV_REFRESH_PAGE") != nullptr) {
        page.replace(start, end - start, table);
        std::ofstream(DTV_LOG_CAPTURE_PAGE) << page;
        return;
    }
    EXPECT_EQ(page.substr(start, end - start), table)
        << "DTV_REFRESH_PAGE=1 ctest -R rebuilt_messages_test puts the table into the page";
}

/// Has the bridge exchange messages; its trace goes to a file.
void exchangeMessages(const fs::path& trace_path) {
    auto log = LogRecorder::install();
    ASSERT_EQ(Product::load(), "");
    auto service = ServiceDouble::serve();
    Random random(20);
    sendCommands(*service, random);
    deliverEvents(random);
    std::ofstream trace(trace_path, std::ios::binary);
    for (const TraceLine& line : log->take()) {
        trace << line.text << "\n";
    }
}

/// Compares the messages, and collects what those that are made of the log lack.
Table compareMessages(const std::vector<Message>& real, const std::vector<Message>& made) {
    Table table;
    for (size_t i = 0; i < real.size() && !testing::Test::HasFailure(); ++i) {
        EXPECT_EQ(headOf(made[i]), headOf(real[i])) << i;
        EXPECT_EQ(difference(real[i], made[i]), "") << headOf(real[i]);
        // What an event was refused for comes before its lines.
        const bool refused = i + 1 < made.size() && made[i + 1].is(Message::Kind::kRefusedEvent);
        if (!refused) {
            table.take(made[i]);
        }
    }
    return table;
}

TEST(RebuiltMessages, AreThoseThatPassed) {
    const fs::path folder = fs::path(testing::TempDir()) / ("rebuilt." + std::to_string(getpid()));
    fs::create_directory(folder);
    // Before the first message.
    setenv("DTV_CAPTURE_FILE", (folder / "real.pcapng").c_str(), 1);
    exchangeMessages(folder / "trace");
    sessions::LineSource source(folder / "trace");
    const sessions::LogCapture result = captureLog(source, folder / "made.pcapng");
    EXPECT_EQ(result.error, "");
    EXPECT_EQ(result.counts.understood, result.counts.of_bridge);
    const std::vector<Message> real = messagesIn(folder / "real.pcapng");
    const std::vector<Message> made = messagesIn(folder / "made.pcapng");
    fs::remove_all(folder);

    ASSERT_EQ(made.size(), real.size());
    const Table table = compareMessages(real, made);
    // 65 commands, 10 answers, 83 events.
    EXPECT_EQ(table.size(), 158U);
    compareWithPage(table.text());
}

} // namespace
