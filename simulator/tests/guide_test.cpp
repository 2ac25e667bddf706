#include "desk_client.h"

#include "records/programme_records.h"
#include "simulator/broadcast.h"
#include "simulator/guide.h"
#include "simulator/text.h"
#include "simulator/xmltv_time.h"

#include <cstdio>
#include <fstream>

namespace {

using namespace simulator;

std::time_t timeOf(const char* text) {
    const std::optional<XmltvTime> time = parseXmltvTime(text);
    EXPECT_TRUE(time.has_value()) << text;
    return time ? time->time : 0;
}

/// The guide of an XMLTV text.
std::optional<Guide> guideOf(const std::string& xml, std::string& error) {
    const std::string path = testing::TempDir() + "/guide_test.xml";
    std::ofstream(path) << xml;
    std::optional<Guide> guide = readGuide(path, error);
    std::remove(path.c_str());
    return guide;
}

std::string nameIn(const PRG_INFO& programme) {
    std::string units;
    for (uint32_t unit = 0; unit < programme.name_size; ++unit) {
        char16_t value = 0;
        std::memcpy(&value, programme.name + 2 * unit, sizeof value);
        units += value < 0x80 ? static_cast<char>(value) : '?';
    }
    return units;
}

TEST(XmltvTimeTest, ReadsWhatFilesWrite) {
    EXPECT_EQ(0, timeOf("19700101000000 +0000"));
    EXPECT_EQ(0, timeOf("19700101090000 +0900"));
    EXPECT_EQ(0, timeOf("19691231210000 -0300"));
    EXPECT_EQ(0, timeOf("19700101000000"));
    EXPECT_EQ(0, timeOf("197001010000 UTC"));
    EXPECT_EQ(86400, timeOf("19700102"));
    EXPECT_EQ(19800, parseXmltvTime("20260401000000 +0530")->utc_offset);
    for (const char* text :
         {"", "2026", "202604", "20261301000000", "20260432000000", "yesterday", "20260401250000",
          "20260401000000 +09", "20260401000000 JST", "20260401000000 +0900x", "2026040100000"}) {
        EXPECT_FALSE(parseXmltvTime(text).has_value()) << text;
    }
}

TEST(TextTest, CutsBetweenCharacters) {
    char field[4];
    EXPECT_EQ(4U, writeText(field, "abcd"));
    EXPECT_EQ(3U, writeText(field, "abcç")) << "half a character does not fit";
    EXPECT_EQ('\0', field[3]);
    EXPECT_EQ(3U, writeText(field, "あい"));
    EXPECT_EQ(4U, writeText(field, "𠮷野"));
}

TEST(TextTest, WritesUtf16) {
    char field[8];
    const auto unit = [&](size_t index) {
        uint16_t value = 0;
        std::memcpy(&value, field + 2 * index, sizeof value);
        return value;
    };
    EXPECT_EQ(4U, writeUtf16(field, 4, "a\xC3\xA9\xE3\x81\x82z"));
    EXPECT_EQ(0x61, unit(0));
    EXPECT_EQ(0xE9, unit(1));
    EXPECT_EQ(0x3042, unit(2));
    EXPECT_EQ(2U, writeUtf16(field, 4, "\xF0\xA0\xAE\xB7"));
    EXPECT_EQ(0xD842, unit(0));
    EXPECT_EQ(0xDFB7, unit(1));
    EXPECT_EQ(0, unit(2));
    EXPECT_EQ(3U, writeUtf16(field, 4, "abc\xF0\xA0\xAE\xB7")) << "half a pair does not fit";
    EXPECT_EQ(2U, writeUtf16(field, 4, "\xFFz"));
    EXPECT_EQ(0xFFFD, unit(0));
    EXPECT_EQ(1U, writeUtf16(field, 4, "\xE3")) << "cut short";
}

TEST(GuideTest, ReadsChannelsAndProgrammes) {
    std::string error;
    const std::optional<Guide> guide = guideOf(
        "<tv><channel id='b'><display-name>B</display-name></channel>"
        "<channel id='a'><display-name>A</display-name><display-name>Um</display-name></channel>"
        "<channel id='silent'/>"
        "<programme channel='a' start='20260401120000 +0000'><title>late</title></programme>"
        "<programme channel='a' start='20260401100000 +0000' stop='20260401110000 +0000'>"
        "<title>early &amp; late</title><desc>text</desc><category>news</category>"
        "<category>unheard of</category><category>Movie</category></programme>"
        "<programme channel='b' start='20260401100000 +0000'><title>alone</title></programme>"
        "<programme channel='nobody' start='20260401100000 +0000'><title>x</title></programme>"
        "<programme channel='a' start='some day'><title>x</title></programme></tv>",
        error);
    ASSERT_TRUE(guide.has_value()) << error;
    ASSERT_EQ(2U, guide->channels.size());
    EXPECT_EQ("B", guide->channels[0].names.at(0)) << "in the order of the file";
    const std::vector<Programme>& programmes = guide->channels[1].programmes;
    ASSERT_EQ(2U, programmes.size());
    EXPECT_EQ("early & late", programmes[0].title);
    EXPECT_EQ("text", programmes[0].text);
    EXPECT_EQ(std::vector<uint8_t>{0x0F}, programmes[0].genres);
    EXPECT_EQ(timeOf("20260401110000 +0000"), programmes[0].stop);
    EXPECT_EQ(timeOf("20260401130000 +0000"), programmes[1].stop) << "the last: one hour";
}

TEST(GuideTest, SaysWhyItCannotRead) {
    std::string error;
    EXPECT_FALSE(readGuide("/no/such/guide.xml", error).has_value());
    EXPECT_EQ("/no/such/guide.xml: File was not found", error);
    EXPECT_FALSE(guideOf("<tv><channel", error).has_value());
    EXPECT_FALSE(guideOf("<html/>", error).has_value());
    EXPECT_NE(std::string::npos, error.find("not an XMLTV file")) << error;
    EXPECT_FALSE(guideOf("<tv/>", error).has_value());
}

class OnAirTest : public testing::Test {
protected:
    OnAirTest() {
        const auto add = [this](const char* start, const char* stop, const char* title) {
            channel_.programmes.push_back({timeOf(start), timeOf(stop), 0, title, "", {}});
        };
        add("20260401060000", "20260401120000", "A");
        add("20260401120000", "20260401180000", "B");
        add("20260401200000", "20260402060000", "C"); // behind a gap of two hours
    }

    std::string currentAt(const char* now) {
        const NowAndNext on_air = onAir(channel_, timeOf(now), 2);
        following_ = on_air.following;
        return on_air.current ? on_air.current->title : "";
    }

    GuideChannel channel_;
    std::vector<Programme> following_;
};

TEST_F(OnAirTest, KnowsWhatIsOnAndWhatFollows) {
    EXPECT_EQ("A", currentAt("20260401060000"));
    ASSERT_EQ(2U, following_.size());
    EXPECT_EQ("B", following_[0].title);
    EXPECT_EQ("C", following_[1].title);
    EXPECT_EQ("A", currentAt("20260401115959"));
    EXPECT_EQ("B", currentAt("20260401120000"));
    EXPECT_EQ("", currentAt("20260401190000"));
    EXPECT_EQ("C", following_[0].title);
}

TEST_F(OnAirTest, RepeatsItsDays) {
    EXPECT_EQ("C", currentAt("20260402000000"));
    EXPECT_EQ("A", following_[0].title);
    EXPECT_EQ(timeOf("20260402060000"), following_[0].start) << "the repetition's time";
    EXPECT_EQ("B", currentAt("20301224150000"));
    EXPECT_EQ(timeOf("20301224200000"), following_[0].start);
    EXPECT_EQ("B", currentAt("20250101150000"));
    EXPECT_EQ("C", currentAt("20260401055959"));
}

TEST(GuideOfStationTest, GoesByNameOrInTurn) {
    ChannelPlan plan;
    plan.stations = {{20, 0, 0, "Um, Dois"}, {21, 0, 0, "X"}, {22, 0, 0, "Y"}};
    Guide guide;
    EXPECT_EQ(nullptr, guide.channelOf(plan.stations[0], plan));
    guide.channels = {{{"first"}, {}}, {{"Um"}, {}}};
    EXPECT_EQ(&guide.channels[1], guide.channelOf(plan.stations[0], plan));
    EXPECT_EQ(&guide.channels[1], guide.channelOf(plan.stations[1], plan));
    EXPECT_EQ(&guide.channels[0], guide.channelOf(plan.stations[2], plan));
}

TEST(ProgrammeGuideTest, FillsTheRecord) {
    GuideChannel channel;
    const std::time_t start = timeOf("20260401193000 -0300");
    channel.programmes.push_back({start, start + 5430, -10800, "Jornal", "O dia", {0x0F, 0x5F}});
    channel.programmes.push_back(
        {start + 7200, start + 10800, -10800, std::string(200, 'x'), "", {}});
    const Station station{20, 1, 0, ""};
    const TS_RECEIVE_EPG_INFO_NOTIFY notify = programmeGuide(3, station, channel, start + 60);
    EXPECT_EQ(3, notify.handle);
    EXPECT_EQ(20U, notify.physical_channel);
    EXPECT_EQ(1, notify.service_no);
    EXPECT_EQ(2026, notify.current.start_date.year);
    EXPECT_EQ(4, notify.current.start_date.month);
    EXPECT_EQ(1, notify.current.start_date.day);
    EXPECT_EQ(19, notify.current.start_time.hour) << "where the file's clock stands";
    EXPECT_EQ(30, notify.current.start_time.min);
    EXPECT_EQ(3, notify.current.start_day_of_week) << "a Wednesday";
    EXPECT_EQ(1, notify.current.duration.hour);
    EXPECT_EQ(30, notify.current.duration.min);
    EXPECT_EQ(30, notify.current.duration.sec);
    EXPECT_EQ(2, notify.current.nibble_cnt);
    EXPECT_EQ(0x5F, notify.current.content_nibble[1]);
    EXPECT_EQ("Jornal", nameIn(notify.current));
    EXPECT_EQ(5U, notify.current.text_size);
    EXPECT_EQ(98U, notify.next.name_size);
    EXPECT_EQ(8, notify.after_prg_infoCnt);
    EXPECT_EQ("Jornal", nameIn(notify.after[0])) << "of the next day";
    EXPECT_EQ(2, notify.after[0].start_date.day);
}

class GuideOnAirTest : public SimulatorTest {};

TEST_F(GuideOnAirTest, ComesWithReception) {
    std::string error;
    std::optional<Guide> guide = readGuide(DTV_GUIDE_FILE, error);
    ASSERT_TRUE(guide.has_value()) << error;
    simulator::Options with_guide = options();
    with_guide.guide = std::move(*guide);
    with_guide.wall_clock = [] { return timeOf("20300101120000 -0300"); };
    start(std::move(with_guide));
    const int handle = create();
    EXPECT_EQ(0, send(command_id::kSelectChannel, serviceOf(handle, 20, 1)));
    const auto notify =
        expectLater(event_id::kReceiveEpgInfoNotify).as<TS_RECEIVE_EPG_INFO_NOTIFY>();
    EXPECT_EQ(handle, notify.handle);
    EXPECT_EQ("Esporte ao meio-dia", nameIn(notify.current));
    EXPECT_EQ("Jornal da tarde", nameIn(notify.next));
    EXPECT_EQ(2030, notify.current.start_date.year);
}

} // namespace
