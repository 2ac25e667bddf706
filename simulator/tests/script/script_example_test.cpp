// The scripts that come with the desk, and the page about scripts.
#include "script/script_text.h"

#include "stepped_client.h"

#include "records/programme_records.h"
#include "records/status_records.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <set>

namespace {

using namespace simulator;

std::string textOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The scripts of the desk by their files' names.
std::map<std::string, std::string> scripts() {
    std::map<std::string, std::string> texts;
    for (const auto& entry : std::filesystem::directory_iterator(DTV_SCRIPT_FOLDER)) {
        texts[entry.path().filename().string()] = textOf(entry.path());
    }
    return texts;
}

/// The blocks of JSON on the page.
std::set<std::string> blocksOfPage() {
    const std::string page = textOf(DTV_SCRIPT_PAGE);
    const std::string fence = "```json\n";
    std::set<std::string> blocks;
    for (size_t at = page.find(fence); at != std::string::npos; at = page.find(fence, at)) {
        at += fence.size();
        const size_t end = page.find("```", at);
        EXPECT_NE(std::string::npos, end);
        blocks.insert(page.substr(at, end - at));
    }
    return blocks;
}

class ScriptExampleTest : public SteppedTest {};

TEST_F(ScriptExampleTest, IsAValidScript) {
    std::set<std::string> names;
    for (const auto& [name, text] : scripts()) {
        names.insert(name);
        EXPECT_EQ("", errorOf(text)) << name;
    }
    EXPECT_EQ((std::set<std::string>{"corrupted-record.json", "slow-and-refusing.json",
                                     "stops-answering.json"}),
              names);
}

TEST_F(ScriptExampleTest, IsPrintedUnchangedOnThePage) {
    std::set<std::string> texts;
    for (const auto& [name, text] : scripts()) {
        texts.insert(text);
    }
    EXPECT_EQ(texts, blocksOfPage());
}

TEST_F(ScriptExampleTest, UsesKeysOfWhichEachHasItsRowOnThePage) {
    const std::string page = textOf(DTV_SCRIPT_PAGE);
    for (const char* key :
         {"version",  "commands", "events",      "records", "stop",   "command", "nth",
          "delay_ms", "result",   "send_result", "answer",  "at_ms",  "after",   "event",
          "fields",   "bytes",    "size",        "drop",    "offset", "hex",     "from"}) {
        EXPECT_NE(std::string::npos, page.find("\n| `" + std::string(key) + "`")) << key;
    }
}

TEST_F(ScriptExampleTest, IsSlowAndRefuses) {
    follow(scripts()["slow-and-refusing.json"]);
    const int handle = openSession();
    EXPECT_EQ(2060, now());
    EXPECT_EQ(0, send(command_id::kSelectChannel, serviceOf(handle, 20)));
    EXPECT_EQ(kDone, awaitResult(event_id::kSelectChannelReply));
    EXPECT_EQ(0, send(command_id::kSelectChannel, serviceOf(handle, 30)));
    EXPECT_EQ(1, awaitResult(event_id::kSelectChannelReply));
    EXPECT_EQ(-1, send(command_id::kStartRec, handle, 0));
    const int64_t before = now();
    TS_COMMON_SYNC_REPLY reply{};
    EXPECT_EQ(1, exchangeInto(reply, command_id::kTerminatePlay_Sync,
                              TS_HANDLE_REQ{static_cast<uint16_t>(handle)}));
    EXPECT_EQ(5000, now() - before);
}

TEST_F(ScriptExampleTest, CorruptsRecords) {
    simulator::Options modified = options();
    std::string error;
    std::optional<Guide> guide = readGuide(DTV_GUIDE_FILE, error);
    ASSERT_TRUE(guide.has_value()) << error;
    modified.guide = std::move(*guide);
    modified.script = scriptOf(scripts()["corrupted-record.json"]);
    modified.wall_clock = [] { return std::time_t{1775080800}; };
    follow(std::move(modified));
    const int handle = openSession();
    EXPECT_EQ(0, send(command_id::kSelectChannel, serviceOf(handle, 20)));
    const auto network = await(event_id::kNetworkInfoNotify).event.as<TS_NETWORK_INFO_NOTIFY>();
    EXPECT_STREQ("\xFF\xFE\x80"
                 "al fantasma",
                 network.network.ts_name);
    const auto services = await(event_id::kServiceInfoNotify).event.as<TS_SERVICE_INFO_NOTIFY>();
    EXPECT_EQ(255, services.svc_cnt);
    EXPECT_EQ(4096U, services.service[0].name_size);
    EXPECT_EQ(700U, await(event_id::kReceiveEpgInfoNotify).event.bytes.size());
    const auto access = await(event_id::kCaInfoNotify).event.as<TS_CA_INFO_NOTIFY>();
    EXPECT_EQ(3, access.ca_status);
    EXPECT_EQ(handle, access.handle);
    EXPECT_EQ((std::vector<uint8_t>{1, 2, 3, 4, 5}), await(0x12345678).event.bytes);
}

TEST_F(ScriptExampleTest, StopsAnswering) {
    follow(scripts()["stops-answering.json"]);
    const int handle = openSession();
    EXPECT_EQ(0, send(command_id::kStartScan, handle));
    EXPECT_TRUE(until(10000).empty());
    EXPECT_EQ(0, send(command_id::kSelectChannel, serviceOf(handle, 20)));
    EXPECT_EQ(kDone, awaitResult(event_id::kSelectChannelReply));
    EXPECT_EQ(-1, send(command_id::kSelectChannel, serviceOf(handle, 30)));
    EXPECT_TRUE(until(now() + 100000).empty());
    EXPECT_FALSE(service().advance());
}

} // namespace
