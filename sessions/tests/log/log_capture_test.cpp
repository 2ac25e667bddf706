// Captures made of logs, byte for byte where the log says what the bytes are.
#include "sessions/known_bytes.h"
#include "sessions/log/log_capture.h"
#include "sessions/message.h"
#include "sessions/tests/log/activity_steps.h"

#include <filesystem>
#include <fstream>
#include <set>

namespace {

using sessions::CaptureReader;
using sessions::LineSource;
using sessions::LogCapture;
using sessions::Message;

namespace fs = std::filesystem;

struct Made {
    LogCapture result;
    std::vector<std::string> messages; ///< with the number of their section
    std::vector<std::string> sections; ///< their notes
    std::string bytes;
};

std::string messageText(const Message& message) {
    static constexpr const char* kKinds[] = {"", "command", "answer", "event", "refused"};
    std::string text = kKinds[message.kind];
    char id[16];
    std::snprintf(id, sizeof id, " %x", static_cast<unsigned>(message.id));
    text += id;
    text += " " + message.thread_name + "(" + std::to_string(message.thread_id) + ") at " +
            std::to_string(message.time.seconds) + "." + std::to_string(message.time.nanoseconds) +
            " value " + std::to_string(message.value) + " size " + std::to_string(message.size) +
            " surfaces " + std::to_string(message.surfaces) + ":";
    for (size_t i = 0; i < message.record.size(); ++i) {
        char byte[8];
        std::snprintf(byte, sizeof byte, " %02x", message.record[i]);
        text += message.known.empty() || message.known[i] ? byte : " ??";
    }
    return text;
}

Made captureOf(const std::string& log) {
    const fs::path path = fs::temp_directory_path() / ("log_capture." + std::to_string(getpid()));
    const TextFile file(log);
    LineSource source(file.path());
    Made made;
    made.result = captureLog(source, path);
    std::ifstream capture(path, std::ios::binary);
    CaptureReader reader(capture);
    uint32_t section = 0;
    while (const auto packet = reader.next()) {
        if (packet->section != section) {
            section = packet->section;
            std::string notes;
            for (const auto& [key, value] : reader.section()) {
                notes += (notes.empty() ? "" : " ") + key + "=" + value;
            }
            made.sections.push_back(notes);
        }
        std::string error;
        const auto message = readMessage(*packet, error);
        EXPECT_EQ(error, "");
        made.messages.push_back(messageText(*message));
    }
    EXPECT_EQ(reader.error(), "");
    EXPECT_EQ(reader.passedBlocks(), 0u);
    fs::remove(path);
    return made;
}

using Texts = std::vector<std::string>;

constexpr char kScan[] = R"(
    desk START dtvSvLibStartScan|hdl = 258
    desk DEBUG dtvSvLibStartScan|SEND, dtvsv_handle = 258
    desk START getRetCode|(param)ret = 0
    desk END getRetCode|
    desk END dtvSvLibStartScan|ret = 0)";
constexpr char kReply[] = R"(
    Event START recvEventFromServer|pid = 3109, threadid = a17ff6c0, event_id = 10000051, recv_size = 12
    Event START getJNIEnv|
    Event INFO getJNIEnv|JNIEnv already got! index=0 threadid=a17ff6c0 env=0x7f3e3c001430 
    Event START DoListenerEvent|
    Event START dtvsv_msgid_lib_start_scan_reply|
    Event DEBUG dtvsv_msgid_lib_start_scan_reply|handle = 258, result = -2, channnel_num = 3
    Event END dtvsv_msgid_lib_start_scan_reply|ret = 0
    Event END DoListenerEvent|
    Event END recvEventFromServer|)";

TEST(LogCapture, HasTheMessagesOfALog) {
    const Made made = captureOf(traceOf(std::string(kScan) + kReply));
    EXPECT_EQ(
        made.messages,
        (Texts{"command 10000002 desk(1) at 0.0 value 0 size 2 surfaces 0: 02 01",
               "event 10000051 Event(2) at 0.0 value 0 size 12 surfaces 0: 02 01 00 00 fe ff ff "
               "ff 03 00 00 00"}));
    EXPECT_EQ(made.sections, Texts{"source=log times=none"});
    EXPECT_EQ(made.result.messages, 2u);
    EXPECT_EQ(made.result.incomplete, 0u);
    EXPECT_EQ(made.result.counts.lines, 14u);
    EXPECT_EQ(made.result.counts.understood, 14u);
    EXPECT_EQ(made.result.error, "");
}

TEST(LogCapture, TakesTimesAsTheyAre) {
    const auto with = [](const std::string& header) {
        std::string log;
        std::istringstream lines(traceOf(kScan));
        for (std::string line; std::getline(lines, line);) {
            log += header + line + "\n";
        }
        return captureOf(log);
    };
    const Made yearless = with("11-21 22:13:37.123  1234  1250 I Dtv_jni : ");
    EXPECT_EQ(yearless.messages, Texts{"command 10000002 desk(1250) at 974844817.123000000 value 0 "
                                       "size 2 surfaces 0: 02 01"});
    EXPECT_EQ(yearless.sections, Texts{"source=log times=local-without-year"});
    const Made dated = with("2026-11-21 22:13:37.123456  1234  1250 I Dtv_jni : ");
    EXPECT_EQ(dated.messages, Texts{"command 10000002 desk(1250) at 1795299217.123456000 value 0 "
                                    "size 2 surfaces 0: 02 01"});
    EXPECT_EQ(dated.sections, Texts{"source=log times=local"});
}

TEST(LogCapture, BeginsASectionWithEachProcess) {
    const std::string load = "\ndesk START JNI_OnLoad|\ndesk END JNI_OnLoad|";
    const Made made = captureOf(traceOf(load + kScan + load + kScan));
    EXPECT_EQ(made.messages.size(), 2u);
    EXPECT_EQ(made.sections, (Texts{"source=log times=none", "source=log times=none"}));
}

TEST(LogCapture, KnowsTheSurfacesByTheCommand) {
    const Made made = captureOf(traceOf(R"(
        desk START dtvSvLibSetDisplayAll|hdl = 1
        desk DEBUG dtvSvLibSetDisplayAll|SEND, dtvsv_handle = 1
        desk END dtvSvLibSetDisplayAll|ret = 0
        desk START dtvSvLibSetCapDisplay|hdl = 1
        desk DEBUG dtvSvLibSetCapDisplay|SEND, dtvsv_handle = 1
        desk END dtvSvLibSetCapDisplay|ret = 0)"));
    ASSERT_EQ(made.messages.size(), 2u);
    EXPECT_NE(made.messages[0].find(" surfaces 3: 01 00 ??"), std::string::npos);
    EXPECT_NE(made.messages[1].find(" surfaces 1: 01 00 ??"), std::string::npos);
}

TEST(LogCapture, AnEmptyLogIsAnEmptyCapture) {
    const Made made = captureOf("");
    EXPECT_EQ(made.messages, Texts{});
    EXPECT_EQ(made.result.error, "");
}

/// What captureLog() says when it is to write that file.
std::string errorFor(const fs::path& path) {
    const TextFile file(traceOf(kScan));
    LineSource source(file.path());
    return captureLog(source, path).error;
}

TEST(LogCapture, SaysWhyThereIsNone) {
    EXPECT_EQ(errorFor("/nowhere/a.pcapng"),
              "cannot write /nowhere/a.pcapng: No such file or directory");
    EXPECT_EQ(errorFor("/dev/full/a.pcapng"), "cannot write /dev/full/a.pcapng: Not a directory");
    EXPECT_EQ(errorFor("/dev/null"), "/dev/null is there already, and is no regular file");
    EXPECT_TRUE(fs::is_character_file("/dev/null"));
    EXPECT_NE(errorFor("/proc/a.pcapng"), "");
}

TEST(LogCapture, LeavesNothingBesideTheFile) {
    const fs::path folder = fs::temp_directory_path() / ("log_capture." + std::to_string(getpid()));
    fs::create_directory(folder);
    fs::create_directory(folder / "taken");
    EXPECT_EQ(errorFor(folder / "made"), "");
    EXPECT_EQ(errorFor(folder / "taken"),
              (folder / "taken").string() + " is there already, and is no regular file");
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder)) {
        names.insert(entry.path().filename());
    }
    EXPECT_EQ(names, (std::set<std::string>{"made", "taken"}));
    fs::remove_all(folder);
}

using sessions::knownBytes;
using sessions::unknownText;

TEST(KnownBytes, AreWritten) {
    EXPECT_EQ(unknownText({}), "");
    EXPECT_EQ(unknownText({true, true}), "");
    EXPECT_EQ(unknownText({false}), "0");
    EXPECT_EQ(unknownText({true, false, false, true, false, true, false, false}), "1-2,4,6-7");
}

TEST(KnownBytes, AreRead) {
    EXPECT_EQ(knownBytes("1-2,4,6-7", 8),
              (std::vector<bool>{true, false, false, true, false, true, false, false}));
    EXPECT_EQ(knownBytes("1-99999999", 3), (std::vector<bool>{true, false, false}));
    EXPECT_EQ(knownBytes("7", 3), (std::vector<bool>{true, true, true}));
}

TEST(KnownBytes, AreNoneWhenTheListIsDamaged) {
    for (const char* const text :
         {"", "x", "1-", "-1", "2-1", "1,", ",1", "1 2", "1-2-3", "1;2", "yes", "9999999999"}) {
        EXPECT_EQ(knownBytes(text, 3), (std::vector<bool>{false, false, false})) << text;
    }
}

} // namespace
