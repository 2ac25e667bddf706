#include "desk_client.h"

#include "receiver/station_records.h"
#include "records/programme_records.h"
#include "xmltv_moment.h"

namespace {

using namespace simulator;

std::string nameIn(const PRG_INFO& programme) {
    std::string units;
    for (uint32_t unit = 0; unit < programme.name_size; ++unit) {
        char16_t value = 0;
        std::memcpy(&value, programme.name + 2 * unit, sizeof value);
        units += value < 0x80 ? static_cast<char>(value) : '?';
    }
    return units;
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
    EXPECT_EQ(19, notify.current.start_time.hour) << "in the time zone of the file";
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
