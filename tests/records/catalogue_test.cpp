// What the catalogue contains about the messages, compared with numbers counted in the records by
// hand.
#include "records/catalogue.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <map>
#include <ostream>
#include <set>
#include <string>
#include <vector>

namespace {

using catalogue::Field;
using catalogue::Kind;
using catalogue::Message;
using catalogue::Record;

struct Layout {
    size_t size;       ///< bytes
    size_t fields;     ///< that have a meaning
    size_t no_meaning; ///< bytes that no field has

    bool operator==(const Layout& other) const {
        return size == other.size && fields == other.fields && no_meaning == other.no_meaning;
    }
};

std::ostream& operator<<(std::ostream& out, const Layout& layout) {
    return out << '{' << layout.size << ", " << layout.fields << ", " << layout.no_meaning << '}';
}

const std::map<std::string, Layout> kLayouts = {
    // clang-format off
    {"BML_DRAWING_INFO", {6, 3, 1}},
    {"BML_TIME", {14, 7, 0}},
    {"CAP_DISPLAY_INFO", {10, 8, 0}},
    {"CAP_DRAWING_INFO", {16, 4, 1}},
    {"DATE", {6, 3, 0}},
    {"NETWORK_INFO", {116, 9, 1}},
    {"PLAY_STATUS_INFO", {12, 3, 6}},
    {"PRG_INFO", {636, 13, 1}},
    {"SCREEN_DRAWING_INFO", {6, 4, 0}},
    {"SERVICE_INFO", {52, 3, 0}},
    {"TIME", {8, 4, 0}},
    {"TS_ASSIGN_VIDEO_AREA_NOTIFY", {8, 3, 1}},
    {"TS_AUTH_REPLY_REQ", {404, 5, 5}},
    {"TS_AUTH_REQ", {8, 2, 2}},
    {"TS_BML_DISPLAY_REQ", {8, 2, 0}},
    {"TS_BML_DISP_ICON_NOTIFY", {4, 3, 0}},
    {"TS_BML_START_TVLINK_REPLY", {3, 2, 0}},
    {"TS_BROADCAST_INFO_REQ", {12, 3, 4}},
    {"TS_BROWSER_REQ", {2056, 7, 0}},
    {"TS_CALL_REQ", {102, 2, 0}},
    {"TS_CAP_DISPLAY_REQ", {18, 2, 0}},
    {"TS_CA_INFO_NOTIFY", {12, 4, 3}},
    {"TS_CHANGE_STATUS_NOTIFY", {4, 2, 1}},
    {"TS_COMMON_REPLY", {8, 2, 2}},
    {"TS_COMMON_SYNC_REPLY", {8, 2, 2}},
    {"TS_COMPONENT_INFO_NOTIFY", {16, 6, 5}},
    {"TS_COMPONENT_SETTING_REQ", {36, 9, 1}},
    {"TS_CONTROL_BML_REQ", {10, 3, 1}},
    {"TS_CONTROL_CAP_REQ", {20, 4, 0}},
    {"TS_COPY_CONTROL_INFO_NOTIFY", {12, 4, 3}},
    {"TS_CREATE_REQ", {4, 2, 1}},
    {"TS_DISPLAY_ALL_REQ", {30, 4, 0}},
    {"TS_DISPLAY_MODE_REQ", {4, 3, 0}},
    {"TS_ENROL_TVLINK_REQ", {960, 9, 1}},
    {"TS_FEP_REPLY_REQ", {1936, 4, 5}},
    {"TS_GET_CAPTION_DATA_NOTIFY", {4, 3, 0}},
    {"TS_HANDLE_NOTIFY", {2, 1, 0}},
    {"TS_HANDLE_REQ", {2, 1, 0}},
    {"TS_KEY_EVENT_REQ", {8, 5, 0}},
    {"TS_MAIL_REQ", {2530, 4, 0}},
    {"TS_NETWORK_INFO_NOTIFY", {124, 3, 2}},
    {"TS_ONE_VALUE_REQ", {4, 2, 1}},
    {"TS_PERMISSION_REPLY_REQ", {12, 3, 5}},
    {"TS_PERMISSION_REQ", {12, 3, 5}},
    {"TS_PHONEBOOK_REQ", {1310, 5, 0}},
    {"TS_PLAY_ERROR_NOTIFY", {8, 2, 2}},
    {"TS_PLAY_EVENT_NOTIFY", {24, 4, 5}},
    {"TS_PLAY_STATUS_NOTIFY", {16, 2, 2}},
    {"TS_READ_NVRAM_REPLY_REQ", {112, 4, 0}},
    {"TS_READ_NVRAM_REQ", {8, 4, 2}},
    {"TS_RECEIVE_EPG_INFO_NOTIFY", {6380, 8, 8}},
    {"TS_RECEIVE_SENSITIVITY_NOTIFY", {20, 5, 4}},
    {"TS_REC_INFO_NOTIFY", {20, 5, 7}},
    {"TS_REC_STATUS_NOTIFY", {16, 4, 4}},
    {"TS_RELEASE_DISPLAY_REPLY", {12, 3, 5}},
    {"TS_RESULT_NOTIFY", {8, 2, 2}},
    {"TS_SAVE_PICTURE_REPLY_REQ", {786, 5, 1}},
    {"TS_SAVE_PICTURE_REQ", {1580, 7, 5}},
    {"TS_SCAN_NOTIFY", {132, 5, 4}},
    {"TS_SCHEDULE_REQ", {1490, 5, 1}},
    {"TS_SCREEN_DISPLAY_REQ", {8, 2, 0}},
    {"TS_SEARCH_CHANNEL_REQ", {16, 4, 7}},
    {"TS_SELECT_AUDIO_COMPONENT_NOTIFY", {8, 2, 2}},
    {"TS_SENS_NOTIFY", {12, 4, 2}},
    {"TS_SERVICE_INFO_NOTIFY", {436, 6, 7}},
    {"TS_SERVICE_REPLY", {16, 4, 4}},
    {"TS_SKIP_PLAY_REQ", {12, 3, 5}},
    {"TS_SOUND_VIDEO_DELAY_REQ", {6, 3, 0}},
    {"TS_SPECIAL_PLAY_REQ", {8, 4, 1}},
    {"TS_START_FEP_REQ", {1940, 5, 5}},
    {"TS_START_PLAY_REQ", {12, 6, 3}},
    {"TS_START_SCAN_REPLY", {12, 3, 4}},
    {"TS_START_SEARCH_CHANNEL_NOTIFY", {8, 2, 2}},
    {"TS_START_TV_LINK_REQ", {280, 7, 1}},
    {"TS_TERMINATE_REC_REPLY", {12, 4, 2}},
    {"TS_TERMINATE_REC_REQ", {202, 4, 1}},
    {"TS_TERMINATE_REC_SYNC_REPLY", {12, 4, 2}},
    {"TS_TERMINATE_SCAN_NOTIFY", {8, 2, 2}},
    {"TS_TERMINATE_SEARCH_CHANNEL_NOTIFY", {16, 4, 4}},
    {"TS_TUNER_LOG_STATUS_REPLY", {12, 3, 5}},
    {"TS_TUNER_SENSITIVITY_DATA_NOTIFY", {32, 10, 4}},
    {"TS_UPDATE_AUDIO_INFO_NOTIFY", {12, 5, 2}},
    {"TS_UPDATE_VIDEO_INFO_NOTIFY", {16, 5, 4}},
    {"TS_WRITE_NVRAM_REQ", {116, 6, 2}},
    // clang-format on
};

void collect(const Record& record, std::map<std::string, const Record*>& records) {
    records[record.name] = &record;
    for (const Field& field : record.fields) {
        if (field.record != nullptr) {
            collect(*field.record, records);
        }
    }
}

std::map<std::string, const Record*> allRecords() {
    std::map<std::string, const Record*> records;
    for (const auto* messages : {&catalogue::commands(), &catalogue::events()}) {
        for (const Message& message : *messages) {
            collect(*message.record, records);
            if (message.reply != nullptr) {
                collect(*message.reply, records);
            }
        }
    }
    return records;
}

const Field& field(const Record& record, const std::string& name) {
    for (const Field& candidate : record.fields) {
        if (candidate.name == name) {
            return candidate;
        }
    }
    throw std::out_of_range(record.name + " has no " + name);
}

TEST(Catalogue, DescribesEveryFieldOfEveryRecord) {
    std::map<std::string, Layout> layouts;
    for (const auto& [name, record] : allRecords()) {
        std::vector<bool> covered(record->size);
        for (const Field& described : record->fields) {
            for (size_t i = 0; i < described.size * described.count; ++i) {
                const size_t at = described.offset + i;
                ASSERT_LT(at, record->size) << name << "." << described.name;
                EXPECT_FALSE(covered[at]) << name << "." << described.name << " overlaps another";
                covered[at] = true;
            }
        }
        const auto no_meaning =
            static_cast<size_t>(std::count(covered.begin(), covered.end(), false));
        layouts[name] = {record->size, record->fields.size(), no_meaning};
    }
    for (const auto& [name, layout] : kLayouts) {
        ASSERT_EQ(layouts.count(name), 1u) << name;
        EXPECT_EQ(layouts[name], layout) << name;
    }
    EXPECT_EQ(layouts.size(), kLayouts.size());
    EXPECT_EQ(kLayouts.size(), 84u);
}

TEST(Catalogue, KeepsFieldsInTheirOrder) {
    for (const auto& [name, record] : allRecords()) {
        for (size_t i = 1; i < record->fields.size(); ++i) {
            EXPECT_LT(record->fields[i - 1].offset, record->fields[i].offset) << name;
        }
    }
}

TEST(Catalogue, DescribesTheKindsOfFields) {
    const Record& guide = *catalogue::find("ReceiveEpgInfoNotify")->record;
    const Field& after = field(guide, "after");
    EXPECT_EQ(after.offset, 1292u);
    EXPECT_EQ(after.size, 636u);
    EXPECT_EQ(after.count, 8u);
    EXPECT_EQ(after.kind, Kind::kRecord);
    ASSERT_NE(after.record, nullptr);
    EXPECT_EQ(after.record->name, "PRG_INFO");
    EXPECT_EQ(field(*after.record, "name").kind, Kind::kUtf16Text);
    EXPECT_EQ(field(*after.record, "text").kind, Kind::kUtf16Text);
    EXPECT_EQ(field(*after.record, "text").size, 388u);
    EXPECT_EQ(field(*after.record, "user_nibble").kind, Kind::kBytes);
    EXPECT_EQ(field(*after.record, "user_nibble").size, 7u);
    EXPECT_EQ(field(*after.record, "user_nibble").count, 1u);

    const Record& network = *field(*catalogue::find("ScanNotify")->record, "network").record;
    EXPECT_EQ(field(network, "ts_name").kind, Kind::kText);
    EXPECT_EQ(field(network, "partialsvc").kind, Kind::kUnsigned);
    EXPECT_EQ(field(network, "partialsvc").size, 2u);
    EXPECT_EQ(field(network, "partialsvc").count, 8u);

    const Record& delay = *catalogue::find("SetSoundVideoDelay")->record;
    EXPECT_EQ(field(delay, "video_viltime").kind, Kind::kUnsigned);
    EXPECT_EQ(field(delay, "audio_viltime").kind, Kind::kSigned);
}

TEST(Catalogue, HasAllMessages) {
    size_t waiting = 0;
    std::set<int> ids;
    std::set<std::string_view> names;
    for (const auto* messages : {&catalogue::commands(), &catalogue::events()}) {
        for (const Message& message : *messages) {
            waiting += message.reply != nullptr ? 1 : 0;
            ids.insert(message.id);
            names.insert(message.name);
            EXPECT_EQ(catalogue::find(message.id), &message);
            EXPECT_EQ(catalogue::find(message.name), &message);
        }
    }
    EXPECT_EQ(catalogue::commands().size(), 65u);
    EXPECT_EQ(catalogue::events().size(), 83u);
    EXPECT_EQ(waiting, 10u);
    EXPECT_EQ(ids.size(), 148u);
    EXPECT_EQ(names.size(), 148u);
    EXPECT_EQ(catalogue::find(0x10000008), nullptr);
    EXPECT_EQ(catalogue::find(0x10000075), nullptr);
    EXPECT_EQ(catalogue::find(0x1000009f), nullptr);
    EXPECT_EQ(catalogue::find("selectchannel"), nullptr);
}

TEST(Catalogue, NamesThemByTheirNumbers) {
    const auto is = [](int id, const char* name, const char* record, const char* reply = "") {
        const Message* message = catalogue::find(id);
        ASSERT_NE(message, nullptr) << name;
        EXPECT_EQ(message->name, name);
        EXPECT_EQ(message->record->name, record) << name;
        EXPECT_EQ(message->reply != nullptr ? message->reply->name : "", reply) << name;
    };
    is(0x10000000, "Create", "TS_CREATE_REQ");
    is(0x10000001, "Release", "TS_HANDLE_REQ");
    is(0x10000009, "CancelSearchChannel", "TS_HANDLE_REQ");
    is(0x10000037, "MovePausePosition", "TS_ONE_VALUE_REQ");
    is(0x10000038, "Release_Sync", "TS_HANDLE_REQ", "TS_COMMON_SYNC_REPLY");
    is(0x10000040, "TerminateRec_Sync", "TS_TERMINATE_REC_REQ", "TS_TERMINATE_REC_SYNC_REPLY");
    is(0x10000041, "TerminatePlay_Sync", "TS_HANDLE_REQ", "TS_COMMON_SYNC_REPLY");
    is(0x10000042, "BmlPermissionReq", "TS_PERMISSION_REQ");
    is(0x1000004f, "CreateReply", "TS_COMMON_REPLY");
    is(0x10000068, "BmlStartTvlinkReply", "TS_BML_START_TVLINK_REPLY");
    is(0x10000074, "MovePausePositionReply", "TS_COMMON_REPLY");
    is(0x1000007f, "ScanNotify", "TS_SCAN_NOTIFY");
    is(0x1000008d, "BmlSavePictureNotify", "TS_COMMON_REPLY");
    is(0x1000009e, "TunerSensitivityDataNotify", "TS_TUNER_SENSITIVITY_DATA_NOTIFY");
}

TEST(Catalogue, NamesTheEventsThatReportOutcomes) {
    const auto is = [](const char* command, const char* event) {
        const Message* message = catalogue::find(command);
        ASSERT_NE(message, nullptr) << command;
        ASSERT_NE(catalogue::find(event), nullptr) << event;
        EXPECT_EQ(message->reply_event, catalogue::find(event)->id) << command;
    };
    is("Create", "CreateReply");
    is("Release", "ReleaseReply");
    is("SelectChannel", "SelectChannelReply");
    is("ReStartPlay", "RestartPlayReply");
    is("MovePausePosition", "MovePausePositionReply");
    EXPECT_EQ(catalogue::find("CancelScan")->reply_event, 0);
    EXPECT_EQ(catalogue::find("Release_Sync")->reply_event, 0);
    EXPECT_EQ(catalogue::find("CreateReply")->reply_event, 0);
    EXPECT_EQ(catalogue::find("ScanNotify")->reply_event, 0);
    std::set<int> events;
    for (const Message& command : catalogue::commands()) {
        if (command.reply_event != 0) {
            EXPECT_GE(command.reply_event, 0x1000004f) << command.name;
            EXPECT_LE(command.reply_event, 0x10000074) << command.name;
            EXPECT_TRUE(events.insert(command.reply_event).second) << command.name;
        }
    }
    EXPECT_EQ(events.size(), 38u) << "each event of that range";
}

} // namespace
